#include "platform/desktop_windows.h"
#include "platform/shell.h"
#include "platform/x11/connection/x11_connection.h"
#include "x11_test.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QTemporaryDir>
#include <QThread>

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

class ShellTest : public X11Test
{
protected:
    explicit ShellTest(const QStringList &windowManager = {})
        : X11Test(windowManager)
    {
        qputenv("PATH", folder.filePath(u"bin"_s).toLocal8Bit() + ':' + m_searchPath);
        QDir(folder.path()).mkdir(u"bin"_s);
    }

    ~ShellTest() override
    {
        qputenv("PATH", m_searchPath);
        qunsetenv("XDG_CONFIG_HOME");
    }

    Shell &shell() { return platform->shell(); }

    QString write(const QString &name, const QByteArray &content, bool executable = false)
    {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write(content);
        if (executable)
            file.setPermissions(file.permissions() | QFile::ExeOwner | QFile::ExeUser);
        return path;
    }

    // A program that runs `commands` and puts what they print into the answer.
    QString program(const QString &name, const QByteArray &commands)
    {
        const QByteArray answer = folder.filePath(u"answer"_s).toLocal8Bit();
        return write(name,
            "#!/bin/sh\n{\n" + commands + "\n} >" + answer + ".part\nmv " + answer + ".part " + answer + '\n',
            true);
    }

    // What the program printed that was started last.
    QString answer()
    {
        QFile file(folder.filePath(u"answer"_s));
        EXPECT_TRUE(waitUntil([&] { return file.exists(); }));
        EXPECT_TRUE(file.open(QFile::ReadOnly));
        return QString::fromUtf8(file.readAll());
    }

    bool hasAnswer() const { return QFile::exists(folder.filePath(u"answer"_s)); }

    static QByteArray listArguments() { return "for word; do printf '<%s>' \"$word\"; done"; }

    QTemporaryDir folder;

private:
    QByteArray m_searchPath = qgetenv("PATH");
};

// Whether a process that this one must wait for has ended.
bool hasZombie()
{
    for (const QString &process : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        QFile file(u"/proc/%1/stat"_s.arg(process));
        if (!file.open(QFile::ReadOnly))
            continue;
        const QByteArray line = file.readAll();
        const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
        if (fields.value(0) == "Z" && fields.value(1).toLongLong() == getpid())
            return true;
    }
    return false;
}

} // namespace

TEST_F(ShellTest, aProgramGetsItsParametersAsWords)
{
    const QString path = program(u"show"_s, listArguments());
    EXPECT_TRUE(shell().open(path, u"one 'two words' \"three \\\" $HOME\" 中文"_s, ShowState::Normal));
    EXPECT_EQ(answer(), u"<one><two words><three \" $HOME><中文>");
}

TEST_F(ShellTest, aProgramWithoutParametersGetsNone)
{
    EXPECT_TRUE(
        shell().open(program(u"show"_s, listArguments() + "; echo $#"), QString(), ShowState::Normal));
    EXPECT_EQ(answer(), u"0\n");
}

TEST_F(ShellTest, aProgramIsFoundByItsNameAlone)
{
    program(u"bin/plum-test-show"_s, listArguments());
    EXPECT_TRUE(shell().open(u"plum-test-show"_s, u"x"_s, ShowState::Normal));
    EXPECT_EQ(answer(), u"<x>");
}

TEST_F(ShellTest, aProgramIsFoundByAPathOfAnotherSystem)
{
    QDir(folder.path()).mkdir(u"Tools"_s);
    program(u"Tools/Show.exe"_s, listArguments());
    const QString path = folder.filePath(u"tools/show.EXE"_s).replace(u'/', u'\\');
    EXPECT_TRUE(shell().open(path, u"x"_s, ShowState::Normal));
    EXPECT_EQ(answer(), u"<x>");
}

TEST_F(ShellTest, aMissingProgramStartsNothing)
{
    program(u"bin/xdg-open"_s, listArguments());
    EXPECT_FALSE(shell().open(folder.filePath(u"missing"_s), QString(), ShowState::Normal));
    EXPECT_FALSE(shell().open(u"no-such-program-anywhere"_s, QString(), ShowState::Normal));
    EXPECT_FALSE(shell().open(u"C:\\Windows\\notepad.exe"_s, QString(), ShowState::Normal));
    EXPECT_FALSE(shell().open(QString(), u"x"_s, ShowState::Normal));
    EXPECT_FALSE(hasAnswer());
}

TEST_F(ShellTest, aProgramWhoseInterpreterIsMissingStartsNothing)
{
    EXPECT_FALSE(
        shell().open(write(u"broken"_s, "#!/no/such/interpreter\n", true), QString(), ShowState::Normal));
}

TEST_F(ShellTest, aDocumentGoesToTheDesktop)
{
    program(u"bin/xdg-open"_s, listArguments());
    const QString document = write(u"a document.txt"_s, "text");
    EXPECT_TRUE(shell().open(QString(document).replace(u'/', u'\\'), u"ignored"_s, ShowState::Normal));
    EXPECT_EQ(answer(), u'<' + document + u'>');
}

TEST_F(ShellTest, aDocumentThatMayBeExecutedGoesToTheDesktopAllTheSame)
{
    program(u"bin/xdg-open"_s, listArguments());
    const QString document = write(u"page.html"_s, "<p>no program</p>", true);
    EXPECT_TRUE(shell().open(document, QString(), ShowState::Normal));
    EXPECT_EQ(answer(), u'<' + document + u'>');
}

TEST_F(ShellTest, aFolderGoesToTheDesktop)
{
    program(u"bin/xdg-open"_s, listArguments());
    EXPECT_TRUE(shell().open(folder.path(), QString(), ShowState::Normal));
    EXPECT_EQ(answer(), u'<' + folder.path() + u'>');
}

TEST_F(ShellTest, anAddressGoesToTheDesktopWithItsOwnSeparators)
{
    program(u"bin/xdg-open"_s, listArguments());
    EXPECT_TRUE(shell().open(u"http:\\\\localhost:8000\\a page?x=1&y=2"_s, QString(), ShowState::Normal));
    EXPECT_EQ(answer(), u"<http://localhost:8000/a page?x=1&y=2>");
}

TEST_F(ShellTest, withoutAnOpenerNothingIsStarted)
{
    qputenv("PATH", folder.filePath(u"bin"_s).toLocal8Bit());
    EXPECT_FALSE(shell().open(folder.path(), QString(), ShowState::Normal));
}

TEST_F(ShellTest, aHelperGetsItsCommandLineWhole)
{
    const QString path = program(u"helper.exe"_s, listArguments());
    EXPECT_TRUE(shell().startHelper(
        QString(path).replace(u'/', u'\\'), u"_url_|||a 'b' \"c\"|||\\d"_s, ShowState::Normal));
    EXPECT_EQ(answer(), u"<_url_|||a 'b' \"c\"|||\\d>");
}

TEST_F(ShellTest, aMissingHelperStartsNothing)
{
    EXPECT_FALSE(shell().startHelper(folder.filePath(u"helper.exe"_s), u"x"_s, ShowState::Normal));
    EXPECT_FALSE(shell().startHelper(write(u"text.exe"_s, "no program"), u"x"_s, ShowState::Normal));
}

TEST_F(ShellTest, aProgramThatHasEndedIsNoZombie)
{
    EXPECT_TRUE(shell().open(program(u"show"_s, "echo $PPID"), QString(), ShowState::Normal));
    EXPECT_NE(answer().trimmed(), QString::number(getpid()));
    EXPECT_FALSE(hasZombie());
    EXPECT_FALSE(
        shell().open(write(u"broken"_s, "#!/no/such/interpreter\n", true), QString(), ShowState::Normal));
    EXPECT_FALSE(hasZombie());
}

TEST_F(ShellTest, aProgramHasNoSignalBlocked)
{
    platform->onEndRequested([] {});
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
    // No shell: some clear the mask themselves.
    const QString copy = folder.filePath(u"status"_s);
    EXPECT_TRUE(shell().open(u"cp"_s, u"/proc/self/status "_s + copy, ShowState::Normal));
    QByteArray status;
    EXPECT_TRUE(waitUntil([&] {
        QFile file(copy);
        status = file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
        return status.contains("SigCgt");
    }));
    EXPECT_TRUE(status.contains("SigBlk:\t0000000000000000\nSigIgn:\t0000000000000000\n"))
        << status.toStdString();
    pthread_sigmask(SIG_UNBLOCK, &blocked, nullptr);
}

TEST_F(ShellTest, aProgramHasNoDescriptorOfOurs)
{
    constexpr int ours = 77;
    ASSERT_EQ(dup2(STDERR_FILENO, ours), ours);
    EXPECT_TRUE(shell().open(program(u"show"_s,
                                 "for n in 0 1 2; do readlink /proc/$$/fd/$n; done; "
                                 "[ -e /proc/$$/fd/77 ] && echo leaked"),
        QString(), ShowState::Normal));
    // The group that prints has its standard output in the answer.
    EXPECT_EQ(answer().split(u'\n').first(), u"/dev/null");
    EXPECT_EQ(answer().split(u'\n').value(2), u"/dev/null");
    EXPECT_FALSE(answer().contains(u"leaked"));
    close(ours);
}

TEST_F(ShellTest, aProgramLeadsASessionOfItsOwn)
{
    EXPECT_TRUE(shell().open(
        program(u"show"_s, "echo $$; cut -d' ' -f6 /proc/$$/stat"), QString(), ShowState::Normal));
    const QStringList numbers = answer().split(u'\n');
    EXPECT_EQ(numbers.value(0), numbers.value(1));
}

TEST_F(ShellTest, aProgramDoesNotLearnWhichPlatformWasChosenForUs)
{
    QFile given(u"/proc/self/environ"_s);
    ASSERT_TRUE(given.open(QFile::ReadOnly));
    if (given.readAll().contains("QT_QPA_PLATFORM="))
        GTEST_SKIP() << "the user has chosen it";
    ASSERT_TRUE(qEnvironmentVariableIsSet("QT_QPA_PLATFORM"));
    EXPECT_TRUE(shell().open(
        program(u"show"_s, "echo \"${QT_QPA_PLATFORM-unset} $DISPLAY\""), QString(), ShowState::Normal));
    EXPECT_EQ(answer(), u"unset "_s + server.display() + u'\n');
}

TEST_F(ShellTest, aProgramOutlivesTheOneThatStartedIt)
{
    const QByteArray gate = folder.filePath(u"gate"_s).toLocal8Bit();
    ASSERT_EQ(mkfifo(gate.constData(), 0600), 0);
    const QString path = program(u"show"_s, "read line <" + gate + "; echo \"$line\"");
    run(builtProgram(u"x11_probe"_s), {u"open"_s, path});
    EXPECT_FALSE(hasAnswer());
    QFile writer(QString::fromLocal8Bit(gate));
    ASSERT_TRUE(writer.open(QFile::WriteOnly | QFile::Unbuffered)); // waits for the reader
    writer.write("still there\n");
    EXPECT_EQ(answer(), u"still there\n");
}

TEST_F(ShellTest, theDesktopFolderIsTheUsersOwn)
{
    const QString desktop = folder.filePath(u"Schreibtisch"_s);
    qputenv("XDG_CONFIG_HOME", folder.path().toLocal8Bit());
    write(u"user-dirs.dirs"_s, "XDG_DESKTOP_DIR=\"" + desktop.toLocal8Bit() + "\"\n");
    EXPECT_EQ(shell().desktopFolder(), QString());
    QDir().mkdir(desktop);
    EXPECT_EQ(shell().desktopFolder(), desktop);
}

TEST_F(ShellTest, whatIsNoShortcutIsItsOwnTarget)
{
    const QString document = write(u"a.txt"_s, "text");
    EXPECT_EQ(shell().shortcutTarget(document), document);
    EXPECT_EQ(shell().shortcutTarget(u"missing.lnk"_s), u"missing.lnk");
}

namespace {

class ManagedShellTest : public ShellTest
{
protected:
    ManagedShellTest()
        : ShellTest({u"openbox"_s})
    {
    }

    void openWindow(ShowState state)
    {
        ASSERT_TRUE(shell().open(builtProgram(u"x11_probe"_s), u"window 'A new one'"_s, state));
    }

    QByteArray text(xcb_window_t window, const char *property)
    {
        const auto found = other.reply(xcb_get_property_reply, xcb_get_property, 0, window,
            other.atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 64);
        return found ? QByteArray(static_cast<const char *>(xcb_get_property_value(found.get())),
                   xcb_get_property_value_length(found.get()))
                     : QByteArray();
    }

    // The new window below this one, managed or not.
    xcb_window_t find(xcb_window_t below)
    {
        const auto tree = other.reply(xcb_query_tree_reply, xcb_query_tree, below);
        if (!tree)
            return XCB_NONE;
        const xcb_window_t *children = xcb_query_tree_children(tree.get());
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
            if (text(children[i], "_NET_WM_NAME") == "A new one"
                && !numbers(children[i], "_NET_WM_PID").empty())
                return children[i];
            if (const xcb_window_t found = find(children[i]))
                return found;
        }
        return XCB_NONE;
    }

    QList<quint32> numbers(xcb_window_t window, const char *property)
    {
        const auto found = other.reply(xcb_get_property_reply, xcb_get_property, 0, window,
            other.atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 64);
        if (!found)
            return {};
        const auto *first = static_cast<const quint32 *>(xcb_get_property_value(found.get()));
        return QList<quint32>(first, first + xcb_get_property_value_length(found.get()) / 4);
    }

    // The manager's state of the new window: 0 withdrawn, 1 normal, 3 minimised.
    std::optional<quint32> state()
    {
        const QList<quint32> values = numbers(find(other.root()), "WM_STATE");
        return values.empty() ? std::nullopt : std::optional(values.front());
    }

    X11Connection other;
};

} // namespace

TEST_F(ManagedShellTest, aNormalWindowIsShown)
{
    openWindow(ShowState::Normal);
    EXPECT_TRUE(waitUntil([&] { return platform->windows().byTitle(u"A new one"_s) != 0 && state() == 1; }));
}

TEST_F(ManagedShellTest, aWindowStartsMinimised)
{
    openWindow(ShowState::Minimised);
    EXPECT_TRUE(waitUntil([&] { return state() == 3; }));
}

TEST_F(ManagedShellTest, aWindowStartsMaximised)
{
    openWindow(ShowState::Maximised);
    EXPECT_TRUE(waitUntil([&] {
        return std::ranges::count(numbers(find(other.root()), "_NET_WM_STATE"),
                   quint32(other.atom("_NET_WM_STATE_MAXIMIZED_VERT")))
            == 1;
    }));
}

TEST_F(ManagedShellTest, aWindowStartsHidden)
{
    openWindow(ShowState::Hidden);
    // Managed first, then taken off the screen and given back by the manager.
    EXPECT_TRUE(waitUntil([&] {
        const xcb_window_t window = find(other.root());
        const auto attributes
            = other.reply(xcb_get_window_attributes_reply, xcb_get_window_attributes, window);
        return window != XCB_NONE && state().value_or(0) == 0 && attributes
            && attributes->map_state == XCB_MAP_STATE_UNMAPPED && !numbers(window, "_OB_APP_CLASS").empty();
    }));
}

TEST_F(ManagedShellTest, aWindowGetsItsStateAlsoWhenTheProcessEndsBeforeItIsThere)
{
    openWindow(ShowState::Minimised);
    platform->releaseDesktop();
    // No event of this process has a part in it any more.
    for (QDeadlineTimer patience(60000); state() != 3 && !patience.hasExpired();)
        QThread::msleep(5);
    EXPECT_EQ(state(), 3U);
}

TEST_F(ManagedShellTest, otherWindowsAreLeftAlone)
{
    QProcess earlier;
    server.start(earlier, builtProgram(u"x11_probe"_s), {u"window"_s, u"An earlier one"_s});
    ASSERT_TRUE(waitUntil([&] { return platform->windows().byTitle(u"An earlier one"_s) != 0; }));
    openWindow(ShowState::Minimised);
    ASSERT_TRUE(waitUntil([&] { return state() == 3; }));
    const WindowHandle window = platform->windows().byTitle(u"An earlier one"_s);
    EXPECT_EQ(numbers(static_cast<xcb_window_t>(window), "WM_STATE").at(0), 1U);
}

} // namespace plum
