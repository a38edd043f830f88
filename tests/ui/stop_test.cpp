#include "ui/frm_set_fixture.h"

#include "ui/controls/passing_note.h"
#include "ui/editing/edit_panel.h"

#include <QLabel>
#include <QPlainTextEdit>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class StopTest : public FrmSetTest
{
protected:
    // Runs the app "go". Its waits look at the signal, as the real ones do.
    void run(const QByteArray &script)
    {
        folder.addApp(u"go"_s, script);
        if (!ui.window())
            start();
        Q_EMIT ui.window()->runFromList(u"go"_s);
    }

    // What the user does in the wait of that number, counted from 1.
    void inWait(int number, const std::function<void()> &action)
    {
        waiter.onWait = [this, number, action] {
            if (++m_waits == number)
                action();
            QApplication::processEvents();
            stop.check();
        };
    }

    QString hint() { return find<QLabel>("hint")->isVisible() ? find<QLabel>("hint")->text() : QString(); }
    QStringList notes() { return platform.log.lines().filter(u"note "_s); }

    int m_waits = 0;
};

} // namespace

TEST_F(StopTest, stopInTheFooterEndsTheRunAndTheLauncherSaysWhere)
{
    inWait(3, [this] {
        EXPECT_TRUE(waitUntil([this] { return hint().contains(u"Stop"_s); }));
        Q_EMIT find<QLabel>("hint")->linkActivated(u"stop"_s);
    });
    run("set.a \"1\"\r\nnote.down \"a\"\r\n//\r\nnote.down \"b\"\r\nnote.down \"c\"\r\n");
    EXPECT_EQ(notes(), QStringList{u"note a"_s});
    EXPECT_TRUE(platform.log.lines().contains(u"release keys"_s));
    EXPECT_FALSE(said().contains(u"end process"_s));
    EXPECT_TRUE(hint().startsWith(u"go: stopped at line 4"_s)) << qPrintable(hint());
    EXPECT_FALSE(state.vardict.contains(u"a"_s));
    EXPECT_FALSE(stop.isRaised());
    EXPECT_FALSE(watchesHand);
    EXPECT_EQ(watches, 1);

    Q_EMIT find<QLabel>("hint")->linkActivated(u"line"_s);
    ASSERT_TRUE(ui.window()->shownEditPanel());
    EXPECT_EQ(find<QPlainTextEdit>("Text4")->textCursor().selectedText(), u"note.down \"b\""_s);
}

TEST_F(StopTest, aRunThatFailsOffersToShowWhatHappened)
{
    run("//edition:2\nset.a set.nowhere\n");
    EXPECT_TRUE(hint().startsWith(u"A run has failed."_s)) << qPrintable(hint());
    EXPECT_FALSE(said().contains(u"shows what happened"_s));
    Q_EMIT find<QLabel>("hint")->linkActivated(u"happened"_s);
    EXPECT_TRUE(said().contains(u"shows what happened"_s));
}

TEST_F(StopTest, stopInTheTrayMenuDoesTheSame)
{
    inWait(1, [this] {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *action = widget->findChild<QAction *>(u"stop"_s))
                action->trigger();
        }
    });
    run("note.down \"a\"\r\n");
    EXPECT_EQ(notes(), QStringList());
    EXPECT_TRUE(hint().startsWith(u"go: stopped at line 1"_s)) << qPrintable(hint());
}

TEST_F(StopTest, reachesTheRunsAroundARunToo)
{
    folder.addApp(u"inner"_s, "note.down \"x\"\r\nnote.down \"y\"\r\n");
    waiter.onWait = [this] {
        ++m_waits;
        if (m_waits == 2) { // of the outer run; the inner one's are the next two
            Q_EMIT ui.window()->runFromList(u"inner"_s);
        } else if (m_waits == 4) {
            stop.raise();
        }
        stop.check();
    };
    run("note.down \"a\"\r\nnote.down \"b\"\r\nnote.down \"c\"\r\n");
    EXPECT_EQ(notes(), (QStringList{u"note a"_s, u"note x"_s}));
    EXPECT_TRUE(hint().startsWith(u"inner: stopped at line 2"_s)) << qPrintable(hint());
    EXPECT_FALSE(stop.isRaised());
}

// A run that waits for its answer has come back to the one in whose wait it was started, which goes on.
TEST_F(StopTest, reachesARunThatWaitsForAnAnswerInsideAnother)
{
    for (const QByteArray &script :
        std::initializer_list<QByteArray>{"input.text \"who\",\"Who?\"\r\nnote.down \"x\"\r\n",
            "//edition:2\ninput.text who,\"Who?\"\nnote.down \"x\"\n"}) {
        SCOPED_TRACE(script.constData());
        folder.addApp(u"inner"_s, script);
        platform.log.clear();
        m_waits = 0;
        int asked = 0;
        waiter.onWait = [&] {
            if (++m_waits == 2)
                Q_EMIT ui.window()->runFromList(u"inner"_s);
            else if (topLevel("shurubox") && ++asked == 2)
                stop.raise();
            QApplication::processEvents();
            stop.check();
        };
        run("//edition:2\nrepeat.times 9\nmouse.l_down\nmouse.l_up\nrepeat.end\nnote.down \"a\"\n");
        EXPECT_EQ(asked, 2) << "the run around it has not gone on";
        EXPECT_TRUE(waitUntil([this] { return !topLevel("shurubox"); }));
        EXPECT_TRUE(hint().contains(u": stopped at line "_s)) << qPrintable(hint());
        EXPECT_FALSE(stop.isRaised());
        EXPECT_FALSE(watchesHand);
        system.starts().resume();
        EXPECT_EQ(notes(), QStringList());
    }
}

TEST_F(StopTest, closesAMessageThatTheRunWaitsFor)
{
    inWait(1, [] {});
    folder.addApp(u"go"_s, "mouse.after_offset \"1:1\",\"2:2\",\"tips\"\r\nnote.down \"a\"\r\n");
    user.answers = false;
    start();
    QTimer looks;
    QObject::connect(&looks, &QTimer::timeout, &looks, [this] {
        if (QApplication::activeModalWidget())
            stop.raise();
    });
    looks.start(1);
    Q_EMIT ui.window()->runFromList(u"go"_s);
    EXPECT_EQ(notes(), QStringList());
    EXPECT_TRUE(hint().startsWith(u"go: stopped at line"_s)) << qPrintable(hint());
}

TEST_F(StopTest, closesAQuestionAndLeavesNothingOfItsRun)
{
    for (const QByteArray &script :
        std::initializer_list<QByteArray>{"set.a \"1\"\r\ninput.text \"who\",\"Who?\"\r\nnote.down \"a\"\r\n",
            "//edition:2\ninput.text who,\"Who?\"\nnote.down \"a\"\n"}) {
        run(script);
        ASSERT_TRUE(topLevel("shurubox"));
        EXPECT_TRUE(watchesHand);
        stop.raise();
        EXPECT_TRUE(waitUntil([this] { return !topLevel("shurubox"); }));
        EXPECT_TRUE(hint().startsWith(u"go: stopped at line 2"_s)) << qPrintable(hint());
        EXPECT_FALSE(state.vardict.contains(u"a"_s));
        EXPECT_FALSE(watchesHand);
        system.starts().resume();
        EXPECT_EQ(notes(), QStringList());
    }
}

TEST_F(StopTest, comesTooLateForARunThatIsOver)
{
    run("note.down \"a\"\r\n");
    stop.raise();
    QApplication::processEvents();
    EXPECT_EQ(hint(), u"go: done"_s);
    EXPECT_FALSE(stop.isRaised());
}

TEST_F(StopTest, endsAScriptStartWithStatus130)
{
    state.runidx[2] = 1;
    state.runctx[1] = u"jb"_s;
    state.runlist = {u"note.down \"a\""_s, u"note.down \"b\""_s};
    inWait(2, [this] { stop.raise(); });
    ui.runAll();
    EXPECT_EQ(notes(), QStringList{u"note a"_s});
    EXPECT_TRUE(said().contains(u"end process 130"_s)) << qPrintable(said().join(u'\n'));
}

TEST_F(StopTest, ofTheSecondEditionIsNotCaughtByTry)
{
    inWait(2, [this] { stop.raise(); });
    run("//edition:2\ntry.start\nmouse.l_down\nmouse.l_up\ntry.failed\nnote.down \"caught\"\ntry.end\n");
    EXPECT_EQ(notes(), QStringList());
    EXPECT_TRUE(hint().startsWith(u"go: stopped at line 4"_s)) << qPrintable(hint());
}

} // namespace plum
