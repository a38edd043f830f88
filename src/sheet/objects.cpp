#include "sheet/objects.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Where the app's folder is below the program's, for paths that leave it. No app has this name.
constexpr QLatin1StringView appPlace("config/apps/\x01");
constexpr QLatin1StringView appsPlace("config/apps/");

// A path inside the program folder, cleaned; nothing when it leaves that folder.
std::optional<QString> programObject(const QString &relative)
{
    const QString clean = QDir::cleanPath(relative);
    if (clean == ".."_L1 || clean.startsWith("../"_L1))
        return {};
    if (clean == appPlace)
        return u"app:"_s;
    if (clean.startsWith(appPlace + u'/'))
        return u"app:"_s + clean.sliced(appPlace.size() + 1);
    if (clean.startsWith(appsPlace))
        return u"apps:"_s + clean.sliced(appsPlace.size());
    return u"program:"_s + (clean == "."_L1 ? QString() : clean);
}

bool isAbsolute(const QString &path)
{
    return path.startsWith(u'/')
        || (path.size() > 2 && path[1] == u':' && path[2] == u'/' && path[0].isLetter());
}

// `path` has "/" alone and nothing unknown in it.
std::optional<QString> knownFileObject(const QString &path)
{
    const QChar first = path.front();
    const QString rest = path.sliced(1);
    // A text behind the folder without a separator names a neighbour of the folder.
    const bool begins = rest.isEmpty() || rest.startsWith(u'/');
    if (first == appFolderText)
        return begins ? programObject(appPlace + rest) : std::nullopt;
    if (first == desktopText) {
        const QString clean = QDir::cleanPath(u'.' + rest);
        if (!begins || clean.startsWith(".."_L1))
            return {};
        return u"desktop:"_s + (clean == "."_L1 ? QString() : clean);
    }
    if (isAbsolute(path))
        return u"file:"_s + QDir::cleanPath(path);
    return programObject(path);
}

QString withoutPlaceholder(const QString &path)
{
    for (const QLatin1StringView head : {"_pfold_"_L1, "_ppfold_"_L1}) {
        if (path == head || path.startsWith(head + u'/'))
            return appFolderText + path.sliced(head.size());
    }
    return path;
}

// Programs that run what their arguments say.
bool runsItsArguments(const QString &program)
{
    static const QStringList names{u"sh"_s, u"bash"_s, u"dash"_s, u"zsh"_s, u"fish"_s, u"ksh"_s, u"env"_s,
        u"sudo"_s, u"su"_s, u"pkexec"_s, u"nohup"_s, u"setsid"_s, u"xargs"_s, u"find"_s, u"python"_s,
        u"python3"_s, u"perl"_s, u"ruby"_s, u"node"_s, u"lua"_s, u"awk"_s, u"xterm"_s, u"cmd"_s,
        u"powershell"_s, u"pwsh"_s, u"wscript"_s, u"cscript"_s, u"mshta"_s, u"rundll32"_s, u"regsvr32"_s,
        u"wine"_s, u"systemd-run"_s, u"x-terminal-emulator"_s, u"plum"_s, u"plumkit"_s};
    QString name = program.sliced(program.lastIndexOf(u'/') + 1).toLower();
    if (name.endsWith(".exe"_L1))
        name.chop(4);
    return names.contains(name);
}

// Files that are looked at, whatever stands in them.
bool isDocument(const QString &object)
{
    static const QStringList endings{
        u"txt"_s, u"log"_s, u"csv"_s, u"md"_s, u"png"_s, u"jpg"_s, u"jpeg"_s, u"gif"_s, u"bmp"_s, u"webp"_s};
    return endings.contains(QFileInfo(object).suffix().toLower());
}

} // namespace

std::optional<QString> fileObject(const QString &written, ObjectForm form)
{
    QString path = QString(written).replace(u'\\', u'/');
    if (form == ObjectForm::Folder && path.isEmpty())
        return u"program:config/module/download/tmp/"_s;
    if (form == ObjectForm::Resolved)
        path = withoutPlaceholder(path);
    if (path.isEmpty())
        return {};
    // A folder's path in the middle of another is a part that nobody can tell.
    for (qsizetype at = 1; at < path.size(); ++at) {
        if (path[at] == appFolderText || path[at] == desktopText)
            path[at] = anyText;
    }
    const qsizetype unknown = path.indexOf(anyText);
    if (unknown < 0 && form != ObjectForm::Folder)
        return knownFileObject(path);
    // The folder is known as far as it goes. The root says nothing.
    const QString folder = unknown < 0 ? path : path.first(path.lastIndexOf(u'/', unknown) + 1);
    if (folder.isEmpty())
        return {};
    const bool isRoot = folder == "/"_L1 || (folder.size() == 3 && isAbsolute(folder));
    const std::optional<QString> object = isRoot ? std::nullopt : knownFileObject(folder);
    if (!object || *object == "program:"_L1)
        return {};
    return object->endsWith(u'/') || object->endsWith(u':') ? object : *object + u'/';
}

bool isWebAddress(const QString &text)
{
    return text.startsWith("http://"_L1, Qt::CaseInsensitive)
        || text.startsWith("https://"_L1, Qt::CaseInsensitive);
}

std::optional<QString> hostObject(const QString &address)
{
    static const QRegularExpression pattern(
        u"\\A(?:https?://)?([a-z0-9](?:[a-z0-9.-]*[a-z0-9])?|\\[[0-9a-f:.]+\\])(?::[0-9]+)?(?:\\z|[/?#])"_s,
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(address.trimmed());
    // Without "http" a lone word may be a scheme.
    if (!match.hasMatch() || (!isWebAddress(address.trimmed()) && !match.captured(1).contains(u'.')))
        return {};
    return u"host:"_s + match.captured(1).toLower();
}

std::optional<QString> runObject(const QString &target)
{
    if (target.contains(anyText))
        return {};
    const QString path = withoutPlaceholder(QString(target).replace(u'\\', u'/'));
    if (runsItsArguments(path) || path.indexOf(appFolderText, 1) > 0 || path.indexOf(desktopText, 1) > 0)
        return {};
    if (!path.contains(u'/') && path != QString(appFolderText) && path != QString(desktopText))
        return path.endsWith(".wf"_L1, Qt::CaseInsensitive) ? std::nullopt : std::optional(u"name:"_s + path);
    static const QRegularExpression scheme(u"\\A[A-Za-z][A-Za-z0-9+.-]+:"_s);
    if (scheme.match(path).hasMatch())
        return u"name:"_s + path;
    const std::optional<QString> object = knownFileObject(path);
    if (!object || object->endsWith(".wf"_L1, Qt::CaseInsensitive))
        return {};
    // What came with a package can be any program, unless it is only looked at. So can what lies on the
    // desktop or beside Plum.
    const bool isFolder = *object == "app:"_L1 || *object == "desktop:"_L1;
    if (!object->startsWith("file:"_L1) && !isFolder && !isDocument(*object))
        return {};
    return object;
}

bool isFolderObject(const QString &object)
{
    return object.endsWith(u'/') || object == "app:"_L1 || object == "desktop:"_L1;
}

bool isScriptObject(const QString &object)
{
    return (object.startsWith("app:"_L1) || object.startsWith("apps:"_L1))
        && object.endsWith(".wf"_L1, Qt::CaseInsensitive);
}

bool isApart(const QString &object)
{
    return object.startsWith("apps:"_L1) || object.startsWith("program:"_L1);
}

} // namespace plum
