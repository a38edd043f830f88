#pragma once

#include "engine/script_vocabulary.h"

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace plum::upgrade {

// A script of edition 1 as one of edition 2, or why there is none.
struct Upgraded
{
    struct Refusal
    {
        int line; // of the script of edition 1, from 1
        QString reason; // a sentence without its last dot
    };

    QString script; // with CR LF behind each line
    std::optional<Refusal> refusal;
};

// Writes the script anew, a line for a line, and proves on the recording backend that it does the same as
// before. `folder` is where it lies, for what it finds beside it; empty for nowhere.
Upgraded upgrade(QByteArrayView script, const QString &folder, const ScriptVocabulary &vocabulary);

} // namespace plum::upgrade
