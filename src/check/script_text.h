#pragma once

#include "check/findings/finding.h"
#include "engine/editions/later_edition.h"

#include <QByteArrayView>
#include <QStringList>

namespace plum {

// A script's bytes as text: its lines, and what can be said of their ends and of the encoding. A file that is
// not valid UTF-8 is read as Latin-1 here, so that every byte has a place; nothing but quotes, commas and
// dots is looked for in it.
struct ScriptText
{
    QString text; // without a mark
    QStringList lines; // ended by CR LF or CR; in later editions by LF too
    AskedEdition edition;
    bool isUtf8 = true;
    bool hasMark = false; // UTF-8's byte-order mark
    Findings findings; // of the file as a whole

    static ScriptText read(QByteArrayView bytes);
};

} // namespace plum
