#include "platform/win32/win32_shell.h"

#include "platform/paths.h"
#include "platform/shortcut_file.h"
#include "platform/win32/com_apartment.h"
#include "platform/win32/started_process.h"
#include "platform/win32/text/wide_text.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <array>
#include <qt_windows.h>
#include <shellapi.h>
#include <shlobj.h>
#include <wrl/client.h>

namespace plum {

using namespace Qt::StringLiterals;
using Microsoft::WRL::ComPtr;

namespace {

constexpr qint64 maxShortcutSize = 1 << 20; // bytes; a larger file is none

// A scheme has two letters at least: one is a drive.
bool isAddress(const QString &target)
{
    static const QRegularExpression scheme(u"^[A-Za-z][A-Za-z0-9+.-]+:"_s);
    return scheme.match(target).hasMatch();
}

// What the shell opens: not every part of it takes "/" in a path, or "\" in an address.
QString shellName(const QString &target)
{
    return isAddress(target) ? QString(target).replace(u'\\', u'/') : QString(target).replace(u'/', u'\\');
}

QString askedOfShell(const QString &file)
{
    const ComApartment apartment;
    ComPtr<IShellLinkW> link;
    ComPtr<IPersistFile> stored;
    if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&link)))
        || FAILED(link.As(&stored)) || FAILED(stored->Load(wide(file), STGM_READ)))
        return {};
    std::array<wchar_t, MAX_PATH> target{};
    if (link->GetPath(target.data(), static_cast<int>(target.size()), nullptr, 0) != S_OK)
        return {};
    return QString::fromWCharArray(target.data());
}

QString readFromFile(const QString &path, TextCodec &codec)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const auto target = readShortcut(file.read(maxShortcutSize), codec);
    if (!target)
        return {};
    return target->isRelative
        ? QString(QFileInfo(path).absolutePath()).replace(u'/', u'\\') + u'\\' + target->path
        : target->path;
}

} // namespace

bool Win32Shell::open(const QString &target, const QString &parameters, ShowState state)
{
    if (target.isEmpty())
        return false;
    const ComApartment apartment;
    const QString name = shellName(target);
    SHELLEXECUTEINFOW what{};
    what.cbSize = sizeof what;
    // This process may end right afterwards, and shows no messages about what it could not open.
    what.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    what.lpVerb = L"open";
    what.lpFile = wide(name);
    what.lpParameters = wide(parameters);
    what.nShow = static_cast<int>(state);
    return ShellExecuteExW(&what);
}

bool Win32Shell::startHelper(const QString &program, const QString &commandLine, ShowState state)
{
    // The helpers lie in folders of their own and use this program's libraries.
    return startProcess(
        QString(program).replace(u'/', u'\\'), commandLine, static_cast<int>(state), m_paths.programFolder());
}

QString Win32Shell::desktopFolder()
{
    PWSTR found = nullptr;
    const bool isThere = SUCCEEDED(SHGetKnownFolderPath(FOLDERID_Desktop, 0, nullptr, &found));
    const QString folder = isThere ? QString::fromWCharArray(found) : QString();
    CoTaskMemFree(found);
    return folder;
}

QString Win32Shell::shortcutTarget(const QString &path)
{
    if (!path.endsWith(".lnk"_L1, Qt::CaseInsensitive) || !QFileInfo(path).isFile())
        return path;
    QString target = askedOfShell(QString(QFileInfo(path).absoluteFilePath()).replace(u'/', u'\\'));
    if (target.isEmpty())
        target = readFromFile(path, m_codec);
    return target.isEmpty() ? path : target;
}

} // namespace plum
