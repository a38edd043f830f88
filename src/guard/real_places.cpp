#include "guard/real_places.h"

#include "platform/paths.h"
#include "platform/platform.h"
#include "platform/shell.h"
#include "sheet/objects.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostLinks = 40;

// The folders whose programs the desktop starts by itself.
QStringList autostartFolders()
{
    QStringList folders;
    for (const QString &config : QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation)) {
        folders += config + u"/autostart"_s;
        folders += config + u"/systemd/user"_s;
    }
    for (const QString &programs : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation))
        folders += programs + u"/Startup"_s;
    return folders;
}

} // namespace

RealPlaces::RealPlaces(Platform &platform)
    : m_platform(platform)
    , m_folders(platform.paths())
{
}

std::optional<QString> RealPlaces::realPath(const QString &systemPath)
{
    QString path = QDir::fromNativeSeparators(systemPath);
    if (!QFileInfo(path).isAbsolute())
        path = QDir::currentPath() + u'/' + path;
    // What is behind the last folder that exists does not exist; it may be made.
    QString rest;
    for (int links = 0; links < mostLinks;) {
        const QFileInfo file(path);
        if (file.exists())
            return QDir::cleanPath(file.canonicalFilePath() + rest);
        if (file.isSymLink()) {
            path = file.symLinkTarget();
            ++links;
            continue;
        }
        while (path.size() > 1 && path.endsWith(u'/'))
            path.chop(1);
        const qsizetype slash = path.lastIndexOf(u'/');
        const QString name = path.sliced(slash + 1);
        if (slash < 0 || name == ".."_L1 || path == "/"_L1)
            return {};
        rest = u'/' + name + rest;
        // Of a root, "/" or "C:/", the slash is a part.
        const bool isRoot = slash == 0 || (slash == 2 && path[1] == u':');
        path = path.first(isRoot ? slash + 1 : slash);
    }
    return {};
}

QString RealPlaces::place(const QString &object, const QString &keyword) const
{
    const qsizetype colon = object.indexOf(u':');
    const QString root = object.first(colon + 1);
    QString rest = object.sliced(colon + 1);
    if (root == "app:"_L1)
        return m_folders.app(keyword) + u'\\' + rest;
    if (root == "apps:"_L1)
        return m_folders.apps() + u'\\' + rest;
    if (root == "program:"_L1)
        return m_folders.file(rest);
    if (root == "desktop:"_L1)
        return m_platform.shell().desktopFolder() + u'/' + rest;
    return rest;
}

bool RealPlaces::isInside(const QString &path, const QString &folder) const
{
    const Qt::CaseSensitivity cases
        = m_platform.paths().interpretsNames() ? Qt::CaseInsensitive : Qt::CaseSensitive;
    return !folder.isEmpty()
        && (path.compare(folder, cases) == 0
            || path.startsWith(folder.endsWith(u'/') ? folder : folder + u'/', cases));
}

// Where names are interpreted, one file has several.
bool RealPlaces::hasOddName(const QString &real) const
{
    if (!m_platform.paths().interpretsNames())
        return false;
    const QString name = real.sliced(real.lastIndexOf(u'/') + 1);
    return name.contains(u':') || name.contains(u'~') || name.endsWith(u'.') || name.endsWith(u' ');
}

// What no folder and no "anything" includes.
bool RealPlaces::isApart(const QString &real, const QString &appFolder, bool isWritten) const
{
    if (isInside(real, appFolder))
        return isWritten && (real.endsWith(".wf"_L1, Qt::CaseInsensitive) || hasOddName(real));
    const Paths &paths = m_platform.paths();
    QStringList folders = autostartFolders();
    folders += {paths.toSystem(paths.programFolder()), m_folders.onDisk(m_folders.apps()),
        m_folders.onDisk(m_folders.load())};
    return std::ranges::any_of(folders, [&](const QString &folder) {
        const std::optional<QString> place = realPath(folder);
        return place && isInside(real, *place);
    });
}

bool RealPlaces::isSame(const QString &object, const QString &keyword, const QString &systemPath) const
{
    return isSameFile(systemPath, m_folders.onDisk(place(object, keyword)));
}

bool RealPlaces::isSameFile(const QString &systemPath, const QString &other) const
{
    const auto real = realPath(systemPath);
    const auto wanted = realPath(other);
    return real && wanted && isInside(*real, *wanted) && isInside(*wanted, *real);
}

bool RealPlaces::isDirectlyIn(const QString &systemPath, const QString &folder) const
{
    const auto real = realPath(systemPath);
    return real && isSameFile(real->first(real->lastIndexOf(u'/') + 1), folder);
}

bool RealPlaces::allows(
    Effect effect, const Scope &scope, const QString &keyword, const QString &systemPath, bool isGiven) const
{
    const std::optional<QString> real = realPath(systemPath);
    if (!real)
        return false;
    const bool isWritten = effect == Effect::WriteFile;
    // What an app was granted is nobody's to write, whatever it was granted.
    if (isWritten && real == realPath(m_folders.onDisk(m_folders.grantsFile())))
        return false;
    for (const QString &object : scope.objects) {
        if (!isFolderObject(object) && isSame(object, keyword, systemPath))
            return true;
    }
    const QString appFolder = realPath(m_folders.onDisk(m_folders.app(keyword))).value_or(QString());
    const bool isKeptApart = isApart(*real, appFolder, isWritten);
    if (scope.given && isGiven && !(isWritten && isKeptApart))
        return true;
    for (const QString &object : scope.objects) {
        if (!isFolderObject(object))
            continue;
        const auto folder = realPath(m_folders.onDisk(place(object, keyword)));
        // A folder that is named inside what is apart is meant, with all but scripts.
        const bool isNamedApart
            = folder && !isInside(*folder, appFolder) && isApart(*folder, appFolder, false);
        const bool isScript = isWritten && real->endsWith(".wf"_L1, Qt::CaseInsensitive);
        if (folder && isInside(*real, *folder) && (isNamedApart ? !isScript : !isKeptApart))
            return true;
    }
    return scope.anything && !isKeptApart;
}

} // namespace plum
