#include "kit/app_commands.h"

#include "check/finding_formats.h"
#include "check/script_check.h"
#include "kit/app_package.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <cstdio>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

constexpr int isMade = 0;
constexpr int isRefused = 1;
constexpr int isUnusable = 2;

int refuse(const QString &problem)
{
    std::fprintf(stderr, "plumkit: %s\n", qUtf8Printable(problem));
    return isUnusable;
}

bool hasError(const CheckedFile &file)
{
    return std::ranges::any_of(
        file.findings, [](const Finding &finding) { return finding.severity == Severity::Error; });
}

QList<CheckedFile> checked(
    const QString &folder, const QStringList &scripts, const ScriptVocabulary &vocabulary)
{
    const ScriptCheck check(vocabulary);
    QList<CheckedFile> files;
    for (const QString &name : scripts) {
        QFile script(QDir(folder).filePath(name));
        if (script.open(QIODevice::ReadOnly))
            files
                += CheckedFile{script.fileName(), check.check(script.readAll(), QDir(folder).absolutePath())};
    }
    return files;
}

} // namespace

AppOptions readAppOptions(const QStringList &arguments, const QString &placeOption, QString &problem)
{
    AppOptions options;
    for (qsizetype index = 0; index < arguments.size() && problem.isEmpty(); ++index) {
        const QString &argument = arguments[index];
        if (argument == "--help"_L1) {
            options.wantsHelp = true;
        } else if (argument == placeOption) {
            options.place = arguments.value(++index);
            if (options.place.isEmpty())
                problem = u"%1 needs a value"_s.arg(placeOption);
        } else if (argument.startsWith(u'-')) {
            problem = u"there is no option %1"_s.arg(argument);
        } else if (!options.name.isEmpty()) {
            problem = u"one at a time, not also %1"_s.arg(argument);
        } else {
            options.name = argument;
        }
    }
    if (problem.isEmpty() && !options.wantsHelp && options.name.isEmpty())
        problem = u"which app?"_s;
    return options;
}

int packFolder(const AppOptions &options, const ScriptVocabulary &vocabulary)
{
    QString problem;
    const std::optional<AppPackage> package = packApp(options.name, problem);
    if (!package)
        return refuse(problem);
    const QList<CheckedFile> scripts = checked(options.name, package->scripts, vocabulary);
    std::fputs(qUtf8Printable(findingsAsText(scripts)), stderr);
    if (std::ranges::any_of(scripts, hasError)) {
        std::fputs("plumkit: a script with an error is not packed\n", stderr);
        return isRefused;
    }
    const QString path = options.place.isEmpty() ? package->keyword + u".wfp"_s : options.place;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)
        || file.write(package->archive.content) != package->archive.content.size() || !file.commit())
        return refuse(u"%1 cannot be written"_s.arg(path));
    std::fputs(qUtf8Printable(u"%1: %2 files\n"_s.arg(path).arg(package->archive.files.size())), stdout);
    for (const QString &name : package->archive.leftOut)
        std::fputs(qUtf8Printable(u"left out: %1\n"_s.arg(name)), stdout);
    return isMade;
}

int makeNewApp(const AppOptions &options)
{
    QString problem;
    const QString parent = options.place.isEmpty() ? QDir::currentPath() : options.place;
    const QString script = makeApp(parent, options.name, problem);
    if (script.isEmpty())
        return refuse(problem);
    std::fputs(qUtf8Printable(script + u'\n'), stdout);
    return isMade;
}

} // namespace plum::kit
