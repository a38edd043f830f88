#pragma once

#include "engine/script_vocabulary.h"
#include "sheet/sheet.h"

#include <QByteArray>

#include <functional>
#include <optional>

namespace plum {

// The scripts of an app. `main.wf` comes first; the others are files that it uses.
struct ScriptSource
{
    QByteArray script;

    // The bytes of another file of the app, by its name in the app's folder; nothing when it cannot be read.
    std::function<std::optional<QByteArray>(const QString &file)> load = {};

    // How bytes of edition 1 become text; UTF-8, else Latin-1, where there is none.
    std::function<QString(const QByteArray &bytes)> decode = {};
};

struct ComputedSheet
{
    Sheet sheet;

    // SHA-256 over the script and all files that it uses, in lower-case hexadecimal digits: scripts of one
    // hash have one sheet.
    QByteArray contentHash;

    // Why the script does not run at all, in words; usually empty. What does not run does nothing.
    QString problem = {};
};

// What a script can bring about, by the tables of the vocabulary. It runs nothing. It is meant for an app of
// the library: the folder of the script is the app's folder. A few milliseconds for a thousand lines.
ComputedSheet computeSheet(const ScriptSource &source, const ScriptVocabulary &vocabulary);

// The hash alone.
QByteArray contentHashOf(const ScriptSource &source, const ScriptVocabulary &vocabulary);

// The same of the app in `folder`, a path of the system; nothing when there is no main.wf to read.
std::optional<ComputedSheet> computeSheetOf(const QString &folder, const ScriptVocabulary &vocabulary,
    const std::function<QString(const QByteArray &bytes)> &decode = {});

// The script of that name in a folder, with the files around it; nothing when it cannot be read.
std::optional<ScriptSource> sourceIn(const QString &folder, const QString &name = QStringLiteral("main.wf"));

} // namespace plum
