#include "store_bench.h"

#include "store/answered_shell.h"
#include "support/wait_until.h"

#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::test::StoreBench;

namespace {

class Channel : public testing::Test
{
protected:
    // Another program puts `text` on the clipboard.
    void copied(const QString &text)
    {
        bench.platform.clipboard().content = text;
        Q_EMIT bench.platform.clipboard().changed();
    }

    StoreBench bench;
};

} // namespace

TEST_F(Channel, APageIsWrittenShownAndTakenFromTheClipboard)
{
    copied(u"##tarnwick:sending##<p>hello</p>"_s);
    EXPECT_EQ(bench.events(), (QStringList{u"write <p>hello</p>"_s, u"show"_s, u"clipboard clear"_s}));
    EXPECT_TRUE(bench.channel.isEnabled());
}

TEST_F(Channel, TheLastPageSwitchesTheChannelOff)
{
    copied(u"##tarnwick:send##<p>last</p>"_s);
    EXPECT_EQ(bench.events(), (QStringList{u"write <p>last</p>"_s, u"show"_s, u"clipboard clear"_s}));
    EXPECT_FALSE(bench.channel.isEnabled());

    copied(u"##tarnwick:send##again"_s);
    EXPECT_EQ(bench.events().size(), 3);
}

TEST(ClipboardChannel, APageFromBeforeTheStartArrives)
{
    plum::recording::RecordingPlatform platform;
    platform.clipboard().content = u"##tarnwick:sending##early"_s;
    plum::ClipboardChannel channel(platform.clipboard());
    QString page;
    QObject::connect(&channel, &plum::ClipboardChannel::pageArrived, &channel,
        [&page](const QString &html) { page = html; });
    EXPECT_TRUE(plum::test::waitUntil([&page] { return !page.isEmpty(); }));
    EXPECT_EQ(page, u"early"_s);
    EXPECT_TRUE(platform.clipboard().content.isEmpty());
}

TEST(ClipboardChannel, APageThatCannotBeTakenAwayArrivesOnce)
{
    // The system may refuse a change when another program's was later; news of the try comes all the same.
    class Refusing final : public plum::Clipboard
    {
    public:
        QString text() override { return content; }
        void setText(const QString &) override { Q_EMIT changed(); }
        void clear() override
        {
            ++tries;
            if (tries < 100)
                Q_EMIT changed();
        }
        std::optional<quint64> timesTaken() const override { return {}; }
        void outliveProcess() override { }

        QString content = u"##tarnwick:sending##stays"_s;
        int tries = 0; // ended, so that this test fails and does not crash
    };
    Refusing clipboard;
    plum::ClipboardChannel channel(clipboard);
    QStringList pages;
    QObject::connect(&channel, &plum::ClipboardChannel::pageArrived, &channel, [&](const QString &html) {
        pages += html;
        if (pages.size() == 2)
            clipboard.content = u"##tarnwick:send##last"_s; // while the one before is being taken
    });
    Q_EMIT clipboard.changed();
    EXPECT_EQ(pages, QStringList{u"stays"_s});
    EXPECT_TRUE(channel.isEnabled());
    Q_EMIT clipboard.changed();
    EXPECT_EQ(pages, (QStringList{u"stays"_s, u"stays"_s, u"last"_s}));
    EXPECT_FALSE(channel.isEnabled());
}

TEST(ClipboardChannel, SwitchedOffBeforeItLooksItLeavesThePageAlone)
{
    plum::recording::RecordingPlatform platform;
    platform.clipboard().content = u"##tarnwick:sending##early"_s;
    plum::ClipboardChannel channel(platform.clipboard());
    channel.setEnabled(false);
    bool hasLooked = false; // a timer of the same length that was started later
    QTimer::singleShot(500, &channel, [&hasLooked] { hasLooked = true; });
    EXPECT_TRUE(plum::test::waitUntil([&hasLooked] { return hasLooked; }));
    EXPECT_EQ(platform.clipboard().content, u"##tarnwick:sending##early"_s);
}

TEST_F(Channel, AMessageOfMoreThan16MebibytesIsTakenAwayUnread)
{
    copied(u"##tarnwick:sending##"_s + QString(50'000'000, u'x'));
    EXPECT_EQ(bench.events(), QStringList{u"clipboard clear"_s});
    EXPECT_TRUE(bench.channel.isEnabled());
    copied(u"##tarnwick:send##"_s + QString(50'000'000, u'x'));
    EXPECT_FALSE(bench.channel.isEnabled());
    EXPECT_EQ(bench.events().size(), 2);
}

TEST_F(Channel, AMarkerAloneIsAnEmptyPage)
{
    copied(u"##tarnwick:send##"_s);
    EXPECT_EQ(bench.events(), (QStringList{u"write "_s, u"show"_s, u"clipboard clear"_s}));
}

TEST_F(Channel, ATextShorterThanTheShorterMarkerIsLeftAlone)
{
    copied(u"##tarnwick:send#"_s);
    copied({});
    EXPECT_TRUE(bench.events().isEmpty());
}

TEST_F(Channel, AMarkerFurtherInsideIsNone)
{
    copied(u"x##tarnwick:send##<p>"_s);
    EXPECT_TRUE(bench.events().isEmpty());
    EXPECT_TRUE(bench.channel.isEnabled());
}

TEST_F(Channel, OnlyTheFirstMarkerIsTakenOff)
{
    copied(u"##tarnwick:sending####tarnwick:send##x"_s);
    EXPECT_EQ(bench.events().first(), u"write ##tarnwick:send##x"_s);
    EXPECT_TRUE(bench.channel.isEnabled());
}

TEST_F(Channel, ClosingTheWindowSwitchesTheChannelOff)
{
    Q_EMIT bench.view.closeRequested();
    copied(u"##tarnwick:sending##late"_s);
    EXPECT_EQ(bench.events(), (QStringList{u"hide"_s, u"clear page"_s}));
}

TEST_F(Channel, AProgramCalledByAScriptSwitchesItOnAgain)
{
    bench.channel.setEnabled(false);
    bench.store.showLoadingPicture();
    copied(u"##tarnwick:sending##page"_s);
    EXPECT_EQ(
        bench.events(), (QStringList{u"loading 1"_s, u"write page"_s, u"show"_s, u"clipboard clear"_s}));
}

TEST_F(Channel, AMessageThatWaitedArrivesWhenTheChannelIsSwitchedOn)
{
    bench.channel.setEnabled(false);
    copied(u"##tarnwick:sending##waited"_s);
    EXPECT_TRUE(bench.events().isEmpty());
    bench.channel.setEnabled(true);
    EXPECT_EQ(bench.events().first(), u"write waited"_s);
}

TEST_F(Channel, AStartOfAHelperSwitchesItOnAgain)
{
    bench.channel.setEnabled(false);
    plum::AnsweredShell shell(bench.platform.shell(), bench.channel);
    EXPECT_TRUE(shell.startHelper(u"browser.exe"_s, u"page"_s, plum::ShowState::Normal));
    EXPECT_TRUE(bench.channel.isEnabled());
    EXPECT_EQ(bench.events(), QStringList{u"helper browser.exe|page|1"_s});
}

TEST_F(Channel, NothingElseOfTheScriptsShellSwitchesItOn)
{
    bench.channel.setEnabled(false);
    bench.platform.shell().desktop = u"/desktop"_s;
    bench.platform.shell().shortcuts = {{u"a.lnk"_s, u"/target"_s}};
    plum::AnsweredShell shell(bench.platform.shell(), bench.channel);
    EXPECT_TRUE(shell.open(u"note.txt"_s, u"x"_s, plum::ShowState::Normal));
    EXPECT_EQ(shell.desktopFolder(), u"/desktop"_s);
    EXPECT_EQ(shell.shortcutTarget(u"a.lnk"_s), u"/target"_s);
    EXPECT_EQ(bench.events().size(), 1);
    EXPECT_FALSE(bench.channel.isEnabled());

    bench.platform.shell().succeeds = false; // a helper that is not there answers nothing
    EXPECT_FALSE(shell.startHelper(u"browser.exe"_s, u"page"_s, plum::ShowState::Normal));
    EXPECT_FALSE(bench.channel.isEnabled());
}
