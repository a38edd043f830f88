#include "ui/frm_set_fixture.h"

#include <QLabel>

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

} // namespace plum
