#include "platform/linux/linux_shell.h"

#include "platform/linux/desktop_entry.h"
#include "platform/linux/detached_process.h"
#include "platform/linux/linux_text_codec.h"
#include "platform/linux/shell_words.h"
#include "platform/paths.h"
#include "platform/shortcut_file.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include <cerrno>
#include <optional>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// A scheme has two letters at least: one is a drive of the systems that apps come from.
bool isAddress(const QString &target)
{
    static const QRegularExpression scheme(u"^[A-Za-z][A-Za-z0-9+.-]+:"_s);
    return scheme.match(target).hasMatch();
}

bool isBareName(const QString &target)
{
    return !target.contains(u'/') && !target.contains(u'\\');
}

bool isProgramFile(const QFileInfo &file)
{
    return file.isFile() && file.isExecutable();
}

constexpr qint64 maxShortcutSize = 1 << 20; // bytes; a larger file is none

// What a shortcut file of this desktop or of Windows says it points to; nothing for any other file.
std::optional<QString> targetOf(const QString &file, TextCodec &codec)
{
    const bool isLink = file.endsWith(".lnk"_L1);
    QFile opened(file);
    if ((!isLink && !file.endsWith(".desktop"_L1)) || !QFileInfo(file).isFile()
        || !opened.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = opened.read(maxShortcutSize);
    if (!isLink)
        return readDesktopEntry(bytes);
    const auto target = readShortcut(bytes, codec);
    if (!target)
        return {};
    return target->isRelative ? QFileInfo(file).absolutePath() + u'\\' + target->path : target->path;
}

} // namespace

bool LinuxShell::open(const QString &target, const QString &parameters, ShowState state)
{
    if (target.isEmpty())
        return false;
    const QFileInfo file(m_paths.toSystem(target));
    if (isProgramFile(file)) {
        const DetachedStart started = start(file.absoluteFilePath(), shellWords(parameters), state);
        // On some file systems every file may be executed, documents too.
        return started || (started.error == ENOEXEC && handToDesktop(file.absoluteFilePath(), state));
    }
    if (file.exists())
        return handToDesktop(file.absoluteFilePath(), state);
    if (isAddress(target))
        return handToDesktop(QString(target).replace(u'\\', u'/'), state);
    if (!isBareName(target))
        return false;
    const QString program = QStandardPaths::findExecutable(target);
    return !program.isEmpty() && start(program, shellWords(parameters), state);
}

bool LinuxShell::startHelper(const QString &program, const QString &commandLine, ShowState state)
{
    const QFileInfo file(m_paths.toSystem(program));
    return isProgramFile(file) && start(file.absoluteFilePath(), {commandLine}, state);
}

bool LinuxShell::handToDesktop(const QString &target, ShowState state)
{
    const QString opener = QStandardPaths::findExecutable(u"xdg-open"_s);
    return !opener.isEmpty() && start(opener, {target}, state);
}

DetachedStart LinuxShell::start(const QString &program, const QStringList &arguments, ShowState state)
{
    DetachedProcess process{.program = program, .arguments = {}};
    for (const QString &argument : arguments)
        process.arguments += argument.toLocal8Bit();
    const DetachedStart started = startDetached(process);
    if (started && state != ShowState::Normal)
        giveToNewWindow(started.process, state);
    return started;
}

QString LinuxShell::desktopFolder()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    return QFileInfo(folder).isDir() ? folder : QString();
}

QString LinuxShell::shortcutTarget(const QString &path)
{
    LinuxTextCodec codec;
    return targetOf(m_paths.toSystem(path), codec).value_or(path);
}

} // namespace plum
