#include "ui/frm_set_fixture.h"

#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class RunDisplayTest : public FrmSetTest
{
protected:
    void run(const QByteArray &script)
    {
        folder.addApp(u"go"_s, script);
        start();
        type(text8(), u"go"_s);
        key(text8(), Qt::Key_Return);
    }

    QString hint() { return find<QLabel>("hint")->isVisible() ? find<QLabel>("hint")->text() : QString(); }
};

} // namespace

TEST_F(RunDisplayTest, aRunThatLastsIsShownWithItsLineAndAWayToStopIt)
{
    QStringList shown;
    waiter.onWait = [&] {
        const QString line = u"go runs, line %1"_s.arg(state.currentLine + 1);
        EXPECT_TRUE(waitUntil([&] { return hint().startsWith(line); })) << qPrintable(hint());
        shown += hint();
    };
    run("//comment\r\nnote.down \"a\"\r\nnote.down \"b\"\r\n");
    ASSERT_EQ(shown.size(), 2);
    EXPECT_TRUE(shown[0].startsWith(u"go runs, line 2"_s));
    EXPECT_TRUE(shown[1].startsWith(u"go runs, line 3"_s));
    EXPECT_TRUE(shown[0].contains(u"Stop"_s));
}

TEST_F(RunDisplayTest, aRunThatShowedNothingSaysThatItIsDone)
{
    run("note.down \"a\"\r\n");
    EXPECT_EQ(hint(), u"go: done"_s);
    EXPECT_TRUE(waitUntil([&] { return hint() != u"go: done"_s; }));
}

TEST_F(RunDisplayTest, aRunThatShowedSomethingNeedsNoWord)
{
    run("os.tips \"tip\"\r\n");
    EXPECT_FALSE(hint().contains(u"done"_s));
    topLevel("shurubox")->close();
    EXPECT_FALSE(hint().contains(u"done"_s));
}

TEST_F(RunDisplayTest, aRunThatLetsTheUserWorkCountsDownAndGoesOnWithEnter)
{
    waiter.onWait = [&] {
        pause = {InputPause::Reason::Hand, 1250};
        EXPECT_TRUE(waitUntil([&] {
            return hint().startsWith(u"go lets you work, and goes on in 1.3 s"_s)
                || hint().startsWith(u"go lets you work, and goes on in 1.2 s"_s);
        })) << qPrintable(hint());
        EXPECT_TRUE(hint().contains(u"Go on (Enter)"_s));
        EXPECT_TRUE(hint().contains(u"Stop"_s));
        pause.milliseconds = 500;
        EXPECT_TRUE(waitUntil([&] { return hint().contains(u"goes on in 0.5 s"_s); })) << qPrintable(hint());
        platform.log.clear();
        QTest::keyClick(text8(), Qt::Key_Return);
        EXPECT_EQ(said(), QStringList(u"goes on"_s)) << "and nothing is run";
        Q_EMIT find<QLabel>("hint")->linkActivated(u"on"_s);
        EXPECT_EQ(said(), (QStringList{u"goes on"_s, u"goes on"_s}));
        pause = {};
        EXPECT_TRUE(waitUntil([&] { return hint().startsWith(u"go runs, line 1"_s); }));
        EXPECT_FALSE(hint().contains(u"Go on"_s));
    };
    run("note.down \"a\"\r\n");
}

TEST_F(RunDisplayTest, aRunWhoseWindowIsNotInFrontSaysSo)
{
    waiter.onWait = [&] {
        pause = {InputPause::Reason::OtherWindow};
        EXPECT_TRUE(waitUntil([&] {
            return hint().startsWith(u"go waits at line 1 until its window is in front again"_s);
        })) << qPrintable(hint());
        EXPECT_FALSE(hint().contains(u"Go on"_s));
        EXPECT_TRUE(hint().contains(u"Stop"_s));
        pause = {};
    };
    run("note.down \"a\"\r\n");
}

} // namespace plum
