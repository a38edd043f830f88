#include "kit/app_package.h"

#include "library/keyword_rules.h"

#include <QDir>
#include <QFileInfo>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView scriptFile("main.wf");
constexpr QLatin1StringView scriptEnding(".wf");

// Packages travel, so their names have to be ones everywhere.
QString faultOf(const QString &keyword)
{
    const KeywordFault fault = keywordFault(keyword, FileNames::Interpreted);
    return fault == KeywordFault::None
        ? QString()
        : u"\"%1\" cannot be a keyword: %2"_s.arg(keyword, keywordMessage(fault));
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

    std::optional<AppArchive> archive = archiveOf(root.absolutePath(), problem);
    if (!archive)
        return {};
    package.archive = std::move(*archive);
    for (const QString &name : std::as_const(package.archive.files)) {
        if (name.endsWith(scriptEnding))
            package.scripts += name;
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
