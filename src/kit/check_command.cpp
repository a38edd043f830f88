#include "kit/check_command.h"

#include "check/finding_formats.h"
#include "check/script_check.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cstdio>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

constexpr int clean = 0;
constexpr int hasFindings = 1;
constexpr int isUnusable = 2;

constexpr QLatin1StringView standardInput("-");
constexpr qint64 largestScript = qint64(1) << 26; // bytes; nobody writes longer ones

struct FormatRow
{
    QLatin1StringView word;
    FindingFormat format;
};
constexpr std::array formats{
    FormatRow{"text"_L1, FindingFormat::Text},
    FormatRow{"json"_L1, FindingFormat::Json},
    FormatRow{"sarif"_L1, FindingFormat::Sarif},
};

int refuse(const QString &path, QLatin1StringView reason)
{
    std::fprintf(stderr, "plumkit: %s %s\n", qUtf8Printable(path), reason.data());
    return isUnusable;
}

// All scripts below a folder, in the order of their names. Names that begin with a dot are copies of an
// editor's.
QStringList scriptsIn(const QString &folder)
{
    QStringList scripts;
    QDirIterator files(folder, {u"*.wf"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        scripts += files.next();
    scripts.sort();
    return scripts;
}

QByteArray inFormat(const QList<CheckedFile> &files, FindingFormat format)
{
    switch (format) {
    case FindingFormat::Json:
        return findingsAsJson(files);
    case FindingFormat::Sarif:
        return findingsAsSarif(files);
    case FindingFormat::Text:
        break;
    }
    return findingsAsText(files).toUtf8();
}

bool hasMoreThanHints(const CheckedFile &file)
{
    return std::ranges::any_of(
        file.findings, [](const Finding &finding) { return finding.severity != Severity::Hint; });
}

} // namespace

CheckOptions readCheckOptions(const QStringList &arguments, QString &problem)
{
    CheckOptions options;
    for (qsizetype index = 0; index < arguments.size() && problem.isEmpty(); ++index) {
        const QString &argument = arguments[index];
        if (argument == "--help"_L1) {
            options.wantsHelp = true;
        } else if (argument == "--format"_L1) {
            const QString word = arguments.value(++index);
            const auto row = std::ranges::find(formats, word, &FormatRow::word);
            if (row == formats.end())
                problem = u"--format takes text, json or sarif, not \"%1\""_s.arg(word);
            else
                options.format = row->format;
        } else if (argument.startsWith(u'-') && argument != standardInput) {
            problem = u"there is no option %1"_s.arg(argument);
        } else {
            options.paths += argument;
        }
    }
    if (problem.isEmpty() && !options.wantsHelp && options.paths.isEmpty())
        problem = u"which file?"_s;
    return options;
}

int checkScripts(const CheckOptions &options, const ScriptVocabulary &vocabulary)
{
    const ScriptCheck check(vocabulary);
    QList<CheckedFile> checked;
    for (const QString &path : options.paths) {
        QStringList scripts{path};
        if (path != standardInput && QFileInfo(path).isDir()) {
            scripts = scriptsIn(path);
            if (scripts.isEmpty())
                return refuse(path, "has no script in it"_L1);
        }
        for (const QString &script : scripts) {
            QFile file(script);
            const bool isOpen = script == standardInput ? file.open(stdin, QIODevice::ReadOnly)
                                                        : file.open(QIODevice::ReadOnly);
            if (!isOpen)
                return refuse(script, "cannot be read"_L1);
            const QByteArray content = file.read(largestScript + 1);
            if (content.size() > largestScript)
                return refuse(script, "is too large for a script"_L1);
            const QString folder
                = script == standardInput ? QString() : QFileInfo(script).absoluteDir().absolutePath();
            checked += CheckedFile{script, check.check(content, folder)};
        }
    }
    const QByteArray output = inFormat(checked, options.format);
    std::fwrite(output.constData(), 1, static_cast<std::size_t>(output.size()), stdout);
    return std::ranges::any_of(checked, hasMoreThanHints) ? hasFindings : clean;
}

} // namespace plum::kit
