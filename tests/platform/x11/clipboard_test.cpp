#include "platform/clipboard.h"
#include "platform/x11/clipboard/selection_reader.h"
#include "platform/x11/connection/x11_connection.h"
#include "support/least_time.h"
#include "x11_test.h"

#include <QClipboard>
#include <QMimeData>
#include <QTemporaryDir>

#include <csignal>
#include <xcb/xfixes.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class ClipboardTest : public X11Test
{
protected:
    Clipboard &clipboard() { return platform->clipboard(); }

    // xclip stays behind as the owner until another program takes the clipboard. No event of Qt's is handled
    // in here.
    void copyElsewhere(const QString &text, const QStringList &options = {})
    {
        const xcb_window_t before = owner();
        QProcess xclip;
        xclip.setStandardOutputFile(QProcess::nullDevice());
        xclip.setStandardErrorFile(QProcess::nullDevice());
        server.start(xclip, u"xclip"_s, QStringList{u"-selection"_s, u"clipboard"_s, u"-i"_s} + options);
        xclip.write(text.toUtf8());
        xclip.closeWriteChannel();
        ASSERT_TRUE(xclip.waitForFinished(-1));
        ASSERT_EQ(xclip.exitCode(), 0);
        // The one that stays behind may take the clipboard only now.
        const uint32_t events = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER;
        other.reply(xcb_xfixes_query_version_reply, xcb_xfixes_query_version, 5, 0);
        xcb_xfixes_select_selection_input(other.xcb(), other.root(), other.atom("CLIPBOARD"), events);
        ASSERT_TRUE(other.waitUntil([&] { return owner() != before && owner() != XCB_NONE; }, 60'000));
    }

    QString pasteElsewhere(const QString &target = u"UTF8_STRING"_s)
    {
        return QString::fromUtf8(
            run(u"xclip"_s, {u"-selection"_s, u"clipboard"_s, u"-o"_s, u"-target"_s, target}));
    }

    xcb_window_t owner()
    {
        const auto found
            = other.reply(xcb_get_selection_owner_reply, xcb_get_selection_owner, other.atom("CLIPBOARD"));
        return found ? found->owner : xcb_window_t(XCB_NONE);
    }

    // Of the program that keeps texts.
    qsizetype keepers() { return server.processes("plum-clipboard"); }

    void setInAnotherProcess(const QString &text)
    {
        run(builtProgram(u"x11_probe"_s), {u"set-clipboard"_s}, text.toUtf8());
    }

    X11Connection other; // a second program's
};

const QString chinese = u"剪贴板里的文字 𠀀 and ASCII\r\nwith two lines"_s;

// Five million characters that differ, so that a piece that is lost or doubled shows.
QString longText()
{
    QString text;
    for (int line = 0; text.size() < 5'000'000; ++line)
        text += u"line %1 of a long text\n"_s.arg(line);
    return text;
}

} // namespace

TEST_F(ClipboardTest, isEmptyAtFirst)
{
    EXPECT_EQ(clipboard().text(), QString());
}

TEST_F(ClipboardTest, givesItsTextToAnotherProgram)
{
    clipboard().setText(u"hello"_s);
    EXPECT_EQ(pasteElsewhere(), u"hello");
    EXPECT_EQ(clipboard().text(), u"hello");
}

TEST_F(ClipboardTest, readsTheTextOfAnotherProgram)
{
    copyElsewhere(u"from elsewhere"_s);
    EXPECT_EQ(clipboard().text(), u"from elsewhere");
}

TEST_F(ClipboardTest, carriesChineseBothWays)
{
    clipboard().setText(chinese);
    EXPECT_EQ(pasteElsewhere(), chinese);
    copyElsewhere(chinese);
    EXPECT_EQ(clipboard().text(), chinese);
}

TEST_F(ClipboardTest, carriesFiveMillionCharactersBothWays)
{
    const QString text = longText();
    clipboard().setText(text);
    EXPECT_EQ(pasteElsewhere(), text);
    copyElsewhere(text);
    EXPECT_EQ(clipboard().text(), text);
}

TEST_F(ClipboardTest, takesTheClipboardBackWithoutHavingSeenTheOtherOwner)
{
    clipboard().setText(u"first"_s);
    ASSERT_EQ(pasteElsewhere(), u"first");
    copyElsewhere(u"second"_s);
    clipboard().setText(u"third"_s);
    EXPECT_EQ(clipboard().text(), u"third");
    EXPECT_EQ(pasteElsewhere(), u"third");
}

TEST_F(ClipboardTest, clearLeavesNothing)
{
    clipboard().setText(u"gone"_s);
    clipboard().clear();
    EXPECT_EQ(clipboard().text(), QString());
    EXPECT_EQ(owner(), xcb_window_t(XCB_NONE));
}

TEST_F(ClipboardTest, clearTakesTheTextOfAnotherProgramAway)
{
    copyElsewhere(u"somebody's"_s);
    clipboard().clear();
    EXPECT_EQ(owner(), xcb_window_t(XCB_NONE));
}

TEST_F(ClipboardTest, anEmptyTextIsEmptyForOthers)
{
    clipboard().setText(QString());
    EXPECT_EQ(clipboard().text(), QString());
    EXPECT_EQ(pasteElsewhere(), QString());
}

TEST_F(ClipboardTest, otherContentReadsAsTheEmptyText)
{
    copyElsewhere(u"not a text"_s, {u"-target"_s, u"image/png"_s});
    EXPECT_EQ(clipboard().text(), QString());
}

TEST_F(ClipboardTest, otherContentIsLostWhenTextIsSet)
{
    auto *picture = new QMimeData;
    picture->setData(u"image/png"_s, "bytes");
    QGuiApplication::clipboard()->setMimeData(picture);
    EXPECT_EQ(clipboard().text(), QString());
    clipboard().setText(u"text"_s);
    EXPECT_FALSE(QGuiApplication::clipboard()->mimeData()->hasFormat(u"image/png"_s));
}

TEST_F(ClipboardTest, anOwnerWithoutUtf8IsAskedForLatin1)
{
    QProcess xclip;
    server.start(xclip, u"xclip"_s,
        {u"-quiet"_s, u"-selection"_s, u"clipboard"_s, u"-i"_s, u"-target"_s, u"STRING"_s});
    xclip.write("caf\xe9");
    xclip.closeWriteChannel();
    ASSERT_TRUE(waitUntil([&] { return owner() != XCB_NONE; }));
    EXPECT_EQ(clipboard().text(), u"café");
}

TEST_F(ClipboardTest, aStoppedOwnerCostsAboutOneSecond)
{
    QProcess xclip;
    server.start(xclip, u"xclip"_s, {u"-quiet"_s, u"-selection"_s, u"clipboard"_s, u"-i"_s});
    xclip.write("never read");
    xclip.closeWriteChannel();
    ASSERT_TRUE(waitUntil([&] { return owner() != XCB_NONE; }));
    ::kill(static_cast<pid_t>(xclip.processId()), SIGSTOP);
    constexpr qint64 most = 2500; // milliseconds
    const qint64 milliseconds = test::leastTime(most, [&] { EXPECT_EQ(clipboard().text(), QString()); });
    EXPECT_GE(milliseconds, 990);
    EXPECT_LT(milliseconds, most);
    ::kill(static_cast<pid_t>(xclip.processId()), SIGCONT);
    EXPECT_EQ(clipboard().text(), u"never read");
}

TEST_F(ClipboardTest, tellsOfChangesByAnyProgram)
{
    int changes = 0;
    QObject::connect(&clipboard(), &Clipboard::changed, [&] { ++changes; });
    clipboard().setText(u"own"_s);
    EXPECT_EQ(changes, 1);
    copyElsewhere(u"other"_s);
    EXPECT_TRUE(waitUntil([&] { return changes >= 2; }));
}

TEST_F(ClipboardTest, textOutlivesTheProcess)
{
    setInAnotherProcess(chinese);
    EXPECT_EQ(clipboard().text(), chinese);
    EXPECT_EQ(pasteElsewhere(), chinese);
    EXPECT_EQ(pasteElsewhere(u"TEXT"_s), chinese);
    EXPECT_EQ(pasteElsewhere(u"text/plain"_s), chinese);
    EXPECT_EQ(pasteElsewhere(u"text/plain;charset=utf-8"_s), chinese);
    EXPECT_EQ(keepers(), 1);
}

TEST_F(ClipboardTest, textIsThereAllTheTimeHoweverSlowTheKeeperIs)
{
    // A copy of the program, with its backend, beside a keeper that waits for its gate.
    const QTemporaryDir folder;
    const QString probe = folder.filePath(u"probe"_s);
    ASSERT_TRUE(QFile::copy(builtProgram(u"x11_probe"_s), probe));
    ASSERT_TRUE(QFile::link(builtProgram(u"plum-x11.so"_s), folder.filePath(u"plum-x11.so"_s)));
    QFile keeper(folder.filePath(u"plum-clipboard"_s));
    ASSERT_TRUE(keeper.open(QFile::WriteOnly));
    const QString gate = folder.filePath(u"gate"_s);
    // It gives up in the end, so that nothing is left of a test that fails.
    keeper.write("#!/bin/sh\nn=0\nwhile [ ! -e '" + gate.toUtf8()
        + "' ]; do\n n=$((n + 1))\n [ $n -lt 700 ] || exit 1\n sleep 0.1\ndone\nexec '"
        + builtProgram(u"plum-clipboard"_s).toUtf8() + "' \"$@\"\n");
    keeper.close();
    ASSERT_TRUE(keeper.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));

    QProcess process;
    server.start(process, probe, {u"set-clipboard"_s});
    process.write(chinese.toUtf8());
    process.closeWriteChannel();
    ASSERT_TRUE(waitUntil([&] { return owner() != XCB_NONE; })); // not yet the keeper
    QFile opened(gate);
    ASSERT_TRUE(opened.open(QFile::WriteOnly));
    ASSERT_TRUE(waitUntil([&] {
        EXPECT_NE(owner(), xcb_window_t(XCB_NONE));
        return process.state() == QProcess::NotRunning;
    }));
    EXPECT_NE(owner(), xcb_window_t(XCB_NONE));
    EXPECT_EQ(clipboard().text(), chinese);
}

TEST_F(ClipboardTest, keptTextIsLatin1ForWhoAsksForIt)
{
    setInAnotherProcess(u"café 中 end"_s);
    EXPECT_EQ(run(u"xclip"_s, {u"-selection"_s, u"clipboard"_s, u"-o"_s, u"-target"_s, u"STRING"_s}),
        QByteArray("caf\xe9 ? end"));
}

TEST_F(ClipboardTest, keptTextNamesItsForms)
{
    setInAnotherProcess(u"kept"_s);
    const QStringList targets = pasteElsewhere(u"TARGETS"_s).split(u'\n', Qt::SkipEmptyParts);
    EXPECT_EQ(targets,
        (QStringList{u"TARGETS"_s, u"TIMESTAMP"_s, u"MULTIPLE"_s, u"UTF8_STRING"_s,
            u"text/plain;charset=utf-8"_s, u"text/plain"_s, u"TEXT"_s, u"STRING"_s}));
}

TEST_F(ClipboardTest, aLongTextOutlivesTheProcess)
{
    const QString text = longText();
    setInAnotherProcess(text);
    EXPECT_EQ(clipboard().text(), text);
    EXPECT_EQ(pasteElsewhere(), text);
}

TEST_F(ClipboardTest, theKeeperEndsWhenAnotherProgramTakesTheClipboard)
{
    setInAnotherProcess(u"kept"_s);
    ASSERT_EQ(keepers(), 1);
    copyElsewhere(u"new"_s);
    EXPECT_TRUE(waitUntil([&] { return keepers() == 0; }));
    EXPECT_EQ(clipboard().text(), u"new");
}

TEST_F(ClipboardTest, aClipboardThatIsNotOursIsLeftAlone)
{
    copyElsewhere(u"theirs"_s);
    const xcb_window_t before = owner();
    clipboard().text();
    platform->releaseDesktop();
    EXPECT_EQ(owner(), before);
    EXPECT_EQ(keepers(), 0);
}

TEST_F(ClipboardTest, aClearedClipboardNeedsNoKeeper)
{
    run(builtProgram(u"x11_probe"_s), {u"clear-clipboard"_s});
    EXPECT_EQ(keepers(), 0);
}

TEST_F(ClipboardTest, theCallerDoesNotWaitForTheKeeper)
{
    // The pipe to cat ends only when nobody holds its other end any more.
    run(u"sh"_s, {u"-c"_s, u"\"$0\" set-clipboard | cat"_s, builtProgram(u"x11_probe"_s)}, "kept");
    EXPECT_EQ(keepers(), 1);
}

TEST_F(ClipboardTest, theKeeperIsFoundThroughASymbolicLink)
{
    const QTemporaryDir folder;
    const QString link = folder.filePath(u"link"_s);
    ASSERT_TRUE(QFile::link(builtProgram(u"x11_probe"_s), link));
    run(link, {u"set-clipboard"_s}, "through a link");
    EXPECT_EQ(clipboard().text(), u"through a link");
    EXPECT_EQ(keepers(), 1);
}

TEST_F(ClipboardTest, aTextThatWasCutOffIsNotKept)
{
    QProcess keeper;
    server.start(keeper, builtProgram(u"plum-clipboard"_s), {u"10"_s});
    keeper.write("short");
    keeper.closeWriteChannel();
    ASSERT_TRUE(keeper.waitForFinished());
    EXPECT_EQ(keeper.exitCode(), 1);
    EXPECT_EQ(owner(), xcb_window_t(XCB_NONE));
}

namespace {

// A clipboard manager as the desktops have one: asked to save, it reads the clipboard and says when it is
// done.
class ManagerStub
{
public:
    ManagerStub()
    {
        m_window = xcb_generate_id(m_connection.xcb());
        xcb_create_window(m_connection.xcb(), XCB_COPY_FROM_PARENT, m_window, m_connection.root(), 0, 0, 1, 1,
            0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(
            m_connection.xcb(), m_window, m_connection.atom("CLIPBOARD_MANAGER"), XCB_CURRENT_TIME);
        m_connection.sync();
        m_connection.addReceiver([this](const xcb_generic_event_t &event) {
            if ((event.response_type & 0x7f) == XCB_SELECTION_REQUEST)
                m_request = reinterpret_cast<const xcb_selection_request_event_t &>(event);
        });
    }

    bool wasAsked()
    {
        m_connection.dispatchArrived();
        return m_request.has_value();
    }

    QByteArray requestedTarget()
    {
        const auto name = m_connection.reply(xcb_get_atom_name_reply, xcb_get_atom_name, m_request->target);
        return {xcb_get_atom_name_name(name.get()), xcb_get_atom_name_name_length(name.get())};
    }

    void save()
    {
        saved = m_reader.text(1000);
        xcb_selection_notify_event_t done{};
        done.response_type = XCB_SELECTION_NOTIFY;
        done.requestor = m_request->requestor;
        done.selection = m_request->selection;
        done.target = m_request->target;
        done.property = m_request->property;
        xcb_send_event(m_connection.xcb(), 0, m_request->requestor, 0, reinterpret_cast<const char *>(&done));
        m_connection.flush();
    }

    QString saved;

private:
    X11Connection m_connection;
    SelectionReader m_reader{m_connection};
    xcb_window_t m_window = XCB_NONE;
    std::optional<xcb_selection_request_event_t> m_request;
};

} // namespace

TEST_F(ClipboardTest, aClipboardManagerSavesTheTextAndTheKeeperEnds)
{
    ManagerStub manager;
    setInAnotherProcess(chinese);
    ASSERT_TRUE(waitUntil([&] { return manager.wasAsked(); }));
    EXPECT_EQ(manager.requestedTarget(), "SAVE_TARGETS");
    EXPECT_EQ(keepers(), 1);
    manager.save();
    EXPECT_EQ(manager.saved, chinese);
    EXPECT_TRUE(waitUntil([&] { return keepers() == 0; }));
}

TEST_F(ClipboardTest, aClipboardManagerThatHangsDoesNotHoldTheProcess)
{
    ManagerStub manager;
    constexpr qint64 most = 4000; // milliseconds; Qt by itself would wait five seconds
    EXPECT_LT(test::leastTime(most, [&] { setInAnotherProcess(chinese); }), most);
    EXPECT_EQ(clipboard().text(), chinese);
}

TEST(OffscreenClipboard, isQtsAlone)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("DISPLAY");
    int count = 1;
    char name[] = "x11_tests";
    char *arguments[] = {name, nullptr};
    const QGuiApplication application(count, arguments);
    const auto platform = createPlatform(QString::fromLocal8Bit(name));
    platform->clipboard().setText(u"here alone"_s);
    EXPECT_EQ(platform->clipboard().text(), u"here alone");
    platform->clipboard().clear();
    EXPECT_EQ(platform->clipboard().text(), QString());
    platform->releaseDesktop();
}

} // namespace plum
