#include "kit/app_package.h"

#include "archive/zip_writer.h"
#include "library/keyword_rules.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView scriptFile("main.wf");
constexpr QLatin1StringView scriptEnding(".wf");

// Every file has this time, the first that a ZIP archive can hold, so that times do not make other bytes.
const QDateTime &timeOfFiles()
{
    static const QDateTime time(QDate(1980, 1, 1), QTime(0, 0));
    return time;
}

// Packages travel, so their names have to be ones everywhere.
QString faultOf(const QString &keyword)
{
    const KeywordFault fault = keywordFault(keyword, FileNames::Interpreted);
    return fault == KeywordFault::None
        ? QString()
        : u"\"%1\" cannot be a keyword: %2"_s.arg(keyword, keywordMessage(fault));
}

// Why a file does not belong into a package; empty when it does.
QString reasonToLeaveOut(const QString &name, const QFileInfo &file)
{
    const QString own = name.section(u'/', -1);
    if (file.isSymLink())
        return u"a link"_s;
    if (name.split(u'/').first().startsWith(u'.') || name.contains("/."_L1))
        return u"hidden"_s;
    if (own.endsWith(".wfp"_L1, Qt::CaseInsensitive))
        return u"a package itself"_s;
    if (own.endsWith(u'~') || own.endsWith(".bak"_L1, Qt::CaseInsensitive))
        return u"an old copy"_s;
    if (own.compare("Thumbs.db"_L1, Qt::CaseInsensitive) == 0
        || own.compare("desktop.ini"_L1, Qt::CaseInsensitive) == 0)
        return u"a file of the system's"_s;
    return {};
}

QStringList namesBelow(const QDir &root)
{
    QStringList names;
    QDirIterator each(
        root.absolutePath(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (each.hasNext())
        names += root.relativeFilePath(each.next());
    names.sort();
    return names;
}

} // namespace

std::optional<AppPackage> packApp(const QString &folder, QString &problem)
{
    const QDir root(QDir(folder).absolutePath());
    AppPackage package;
    package.keyword = root.dirName();
    problem = faultOf(package.keyword);
    if (problem.isEmpty() && !QFileInfo(root.filePath(scriptFile)).isFile())
        problem = u"%1 has no %2"_s.arg(folder, scriptFile);
    if (!problem.isEmpty())
        return {};

    ZipWriter archive;
    for (const QString &name : namesBelow(root)) {
        QFile file(root.filePath(name));
        if (const QString reason = reasonToLeaveOut(name, QFileInfo(file)); !reason.isEmpty()) {
            package.leftOut += u"%1 (%2)"_s.arg(name, reason);
            continue;
        }
        if (!file.open(QIODevice::ReadOnly)) {
            problem = u"%1 cannot be read"_s.arg(file.fileName());
            return {};
        }
        archive.add(name, file.readAll(), timeOfFiles());
        package.files += name;
        if (name.endsWith(scriptEnding))
            package.scripts += name;
    }
    package.archive = archive.finish();
    if (package.archive.isEmpty()) {
        problem = u"%1 is too large for a package"_s.arg(folder);
        return {};
    }
    return package;
}

QString makeApp(const QString &parent, const QString &keyword, QString &problem)
{
    problem = faultOf(keyword);
    if (!problem.isEmpty())
        return {};
    const QDir folder(QDir(parent).filePath(keyword));
    if (QFileInfo::exists(folder.path())) {
        problem = u"%1 is there already"_s.arg(folder.path());
        return {};
    }
    QFile script(folder.filePath(scriptFile));
    const QByteArray text
        = u"//guide:%1 says hello\r\n//edition:2\r\nos.tips \"Hello from %1.\"\r\n"_s.arg(keyword).toUtf8();
    if (!QDir().mkpath(folder.path()) || !script.open(QIODevice::WriteOnly)
        || script.write(text) != text.size()) {
        problem = u"%1 cannot be made"_s.arg(script.fileName());
        return {};
    }
    return script.fileName();
}

} // namespace plum::kit
