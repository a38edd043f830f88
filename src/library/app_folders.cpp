#include "library/app_folders.h"

#include "platform/paths.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView appsFolder("config\\apps");
constexpr QLatin1StringView loadFolder("config\\load");
constexpr QLatin1StringView workName(".unpacking");

} // namespace

QString AppFolders::file(const QString &name) const
{
    const QString folder = m_paths.programFolder();
    // The root of a drive, "C:\", ends in its separator.
    return folder + (folder.endsWith(u'\\') || folder.endsWith(u'/') ? u""_s : u"\\"_s) + name;
}

QString AppFolders::apps() const
{
    return file(appsFolder);
}

QString AppFolders::app(const QString &keyword) const
{
    return apps() + u'\\' + keyword;
}

QString AppFolders::appFile(const QString &keyword, const QString &name) const
{
    return app(keyword) + u'\\' + name;
}

QString AppFolders::appScript(const QString &keyword) const
{
    return appsFolder + u'\\' + keyword + u"\\main.wf"_s;
}

QString AppFolders::browserHelper() const
{
    return file(u"config\\module\\net\\browser\\browser.exe"_s);
}

QString AppFolders::downloadHelper() const
{
    return file(u"config\\module\\download\\download.exe"_s);
}

QString AppFolders::downloads() const
{
    return file(u"config\\module\\download\\tmp"_s);
}

QString AppFolders::load() const
{
    return file(loadFolder);
}

QString AppFolders::loadFile(const QString &name) const
{
    return load() + u'\\' + name;
}

QString AppFolders::listFile() const
{
    return loadFile(u"config.txt"_s);
}

QString AppFolders::packageRecords() const
{
    return loadFile(u"packages"_s);
}

QString AppFolders::storeMemory() const
{
    return loadFile(u"store"_s);
}

QString AppFolders::grantsFile() const
{
    return loadFile(u"grants.json"_s);
}

QString AppFolders::launcherClaim() const
{
    return loadFile(u"launcher.lock"_s);
}

QString AppFolders::launcherRequests() const
{
    return loadFile(u"requests"_s);
}

QString AppFolders::unpacking() const
{
    return file(u"config\\unpacking"_s);
}

QString AppFolders::unpackingInApps() const
{
    return app(workName);
}

QString AppFolders::fixComponent() const
{
    return file(u"config\\settings\\fix\\COMDLG32.OCX"_s);
}

QString AppFolders::onDisk(const QString &path) const
{
    return m_paths.toSystem(path);
}

std::optional<QString> AppFolders::appOnDisk(const QString &keyword) const
{
    if (!isFolderName(keyword))
        return std::nullopt;
    return onDisk(app(keyword));
}

KeywordFault AppFolders::fault(const QString &keyword) const
{
    if (keyword.compare(workName, Qt::CaseInsensitive) == 0)
        return KeywordFault::Forbidden;
    return keywordFault(keyword, m_paths.interpretsNames() ? FileNames::Interpreted : FileNames::Kept);
}

bool AppFolders::isApp(QStringView folderName)
{
    return folderName != workName;
}

} // namespace plum
