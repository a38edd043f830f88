#include "ui/stepping_fixture.h"

#include "look/theme.h"
#include "support/run_witness.h"
#include "ui/editing/edit_panel.h"
#include "ui/editing/step_view.h"

#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>

namespace plum {

using namespace Qt::StringLiterals;

TEST_F(SteppingTest, goesFromOneLineToTheNextInBothEditions)
{
    for (const QByteArray script : {"//comment\r\nset.a \"1\"\r\nnote.down set.a\r\nnote.down \"b\"\r\n",
             "//edition:2\nset.a 1\nnote.down set.a\nnote.down \"b\""}) {
        platform.log.clear();
        if (!ui.window())
            edit(script);
        else {
            folder.addApp(u"app"_s, script);
            Q_EMIT ui.window()->editRequested(u"app"_s);
        }
        QStringList noted;
        std::vector<Step> steps(3, [&] {
            noted += notes().join(u',');
            press(Qt::Key_F10);
        });
        follow(f10(), steps);
        EXPECT_EQ(
            places, (QStringList{u"Held before line 2"_s, u"Held before line 3"_s, u"Held before line 4"_s}));
        EXPECT_EQ(noted, (QStringList{QString(), QString(), u"note 1"_s}));
        EXPECT_EQ(notes(), (QStringList{u"note 1"_s, u"note b"_s}));
        EXPECT_EQ(held(), QString());
        EXPECT_FALSE(editor().isReadOnly());
        EXPECT_FALSE(find("stepView")->isVisible());
    }
}

TEST_F(SteppingTest, theLineBeforeWhichItIsHeldIsMarked)
{
    edit("note.down \"a\"\r\nnote.down \"b\"");
    int marked = 0;
    follow(f10(), times(2, [&] {
        const auto selections = editor().extraSelections();
        ASSERT_EQ(selections.size(), 1);
        EXPECT_EQ(selections[0].cursor.blockNumber(), marked);
        EXPECT_EQ(selections[0].format.background().color(), editor().theme().held);
        EXPECT_TRUE(editor().rows()[std::size_t(marked)].isHeld);
        EXPECT_EQ(editor().textCursor().blockNumber(), marked);
        EXPECT_TRUE(editor().hasFocus());
        ++marked;
        press(Qt::Key_F10);
    }));
    EXPECT_TRUE(editor().extraSelections().isEmpty());
    EXPECT_EQ(notes().size(), 2);
}

TEST_F(SteppingTest, breakpointsHoldARunThatGoesOn)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\nnote.down \"c\"\r\n");
    toggle(1);
    EXPECT_EQ(note(), u"Runs are held before line 2."_s);
    EXPECT_EQ(editor().breakpoints(), QList<int>{1});
    follow(f5(), {f5()});
    EXPECT_EQ(places, QStringList(u"Held before line 2"_s));
    EXPECT_EQ(notes().size(), 3);
    toggle(1);
    EXPECT_EQ(note(), u"No breakpoint in line 2 any more."_s);
    follow(f5(), {});
    EXPECT_EQ(notes().size(), 6);
}

TEST_F(SteppingTest, aClickIntoTheMarginSetsABreakpointAndTakesItAway)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\n");
    const ScriptEditor::Row row = editor().rows()[1];
    const QPoint number(5, int(row.top + row.height / 2));
    click(find("lineNumbers"), Qt::RightButton, number);
    EXPECT_EQ(editor().breakpoints(), QList<int>());
    const QImage before = find("lineNumbers")->grab().toImage();
    click(find("lineNumbers"), Qt::LeftButton, number);
    EXPECT_EQ(editor().breakpoints(), QList<int>{1});
    EXPECT_NE(find("lineNumbers")->grab().toImage(), before);
    follow(f5(), {f5()});
    EXPECT_EQ(places, QStringList(u"Held before line 2"_s));
    click(find("lineNumbers"), Qt::LeftButton, number);
    EXPECT_EQ(editor().breakpoints(), QList<int>());
}

TEST_F(SteppingTest, aBreakpointGoesToTheNextLineThatRuns)
{
    edit("note.down \"a\"\r\n\r\n//comment\r\nnote.down \"b\"\r\n//the end\r\n");
    toggle(1);
    EXPECT_EQ(editor().breakpoints(), QList<int>{3});
    toggle(2);
    EXPECT_EQ(editor().breakpoints(), QList<int>());
    toggle(4);
    EXPECT_EQ(editor().breakpoints(), QList<int>());
    EXPECT_EQ(note(), u"No line runs from here on."_s);
}

TEST_F(SteppingTest, breakpointsMoveWithTheirText)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\nnote.down \"c\"\r\n");
    toggle(1);
    setCaret(0);
    editor().insertPlainText(u"note.down \"0\"\n"_s);
    EXPECT_EQ(editor().breakpoints(), QList<int>{2});
    setCaret(2);
    editor().insertPlainText(u"\n"_s); // the text of the line goes down
    EXPECT_EQ(editor().breakpoints(), QList<int>{3});
    editor().undo();
    EXPECT_EQ(editor().breakpoints(), QList<int>{2});

    // Another text in its place is still its line.
    QTextCursor line(editor().document()->findBlockByNumber(2));
    line.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    line.insertText(u"note.down \"B\""_s);
    EXPECT_EQ(editor().breakpoints(), QList<int>{2});

    // It goes with the line.
    line = QTextCursor(editor().document()->findBlockByNumber(2));
    line.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor);
    line.removeSelectedText();
    EXPECT_EQ(editor().document()->findBlockByNumber(2).text(), u"note.down \"c\""_s);
    EXPECT_EQ(editor().breakpoints(), QList<int>());
}

TEST_F(SteppingTest, whatIsTypedIsSavedFirstAndBreakpointsAndCaretStay)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\n");
    toggle(1);
    editor().moveCursor(QTextCursor::End);
    editor().insertPlainText(u"\nnote.down \"c\""_s);
    setCaret(2);
    follow(f5(), {[this] {
        EXPECT_EQ(editor().breakpoints(), QList<int>{1});
        press(Qt::Key_F5);
    }});
    EXPECT_EQ(saved(), "note.down \"a\"\r\nnote.down \"b\"\r\nnote.down \"c\"\r\n");
    EXPECT_TRUE(isEditing());
    EXPECT_FALSE(ui.window()->editPanel().isModified());
    EXPECT_EQ(notes().size(), 3);
}

TEST_F(SteppingTest, aNewAppIsMadeFirst)
{
    start();
    ui.window()->editPanel().openForAdding(u"new"_s);
    ui.window()->showEditPanel();
    editor().setPlainText(u"note.down \"a\"\nnote.down \"b\""_s);
    toggle(1);
    follow(f5(), {f5()});
    EXPECT_EQ(places, QStringList(u"Held before line 2"_s));
    EXPECT_EQ(notes().size(), 2);
    EXPECT_EQ(ui.window()->editPanel().mode(), EditPanel::Mode::Edit);
}

TEST_F(SteppingTest, anAppThatCannotBeSavedIsNotFollowed)
{
    start();
    ui.window()->editPanel().openForAdding();
    ui.window()->showEditPanel();
    editor().setPlainText(u"note.down \"a\""_s);
    follow(f10(), {});
    EXPECT_EQ(user.seen, QStringList(u"!Keyword is required"_s));
    EXPECT_FALSE(editor().isReadOnly());
    EXPECT_EQ(notes(), QStringList());
}

TEST_F(SteppingTest, runsToTheLineOfTheCaret)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\n\r\nnote.down \"c\"\r\nnote.down \"d\"\r\n");
    setCaret(1);
    follow(pressing(Qt::Key_F10, Qt::ControlModifier),
        {[this] {
             setCaret(2); // the next line runs
             press(Qt::Key_F10, Qt::ControlModifier);
         },
            f5()});
    EXPECT_EQ(places, (QStringList{u"Held before line 2"_s, u"Held before line 4"_s}));
    EXPECT_EQ(notes().size(), 4);
    EXPECT_EQ(editor().breakpoints(), QList<int>()) << "it is no breakpoint";
}

TEST_F(SteppingTest, breakpointsThatAreSetMeanwhileCount)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\nnote.down \"c\"\r\n");
    follow(f10(),
        {[this] {
             toggle(2);
             press(Qt::Key_F5);
         },
            f5()});
    EXPECT_EQ(places, (QStringList{u"Held before line 1"_s, u"Held before line 3"_s}));
}

TEST_F(SteppingTest, holdsOnceAPassOfARepetition)
{
    edit("while.start \"count\",\"2\"\r\nnote.down \"a\"\r\nwhile.end \r\nnote.down \"b\"\r\n");
    follow(f10(), times(5, f10()));
    EXPECT_EQ(places,
        (QStringList{u"Held before line 1"_s, u"Held before line 2"_s, u"Held before line 3"_s,
            u"Held before line 2"_s, u"Held before line 4"_s}));
    EXPECT_EQ(notes(), (QStringList{u"note a"_s, u"note a"_s, u"note b"_s}));
}

TEST_F(SteppingTest, stepsIntoAPartAndOutOfIt)
{
    edit("//edition:2\npart.run p\nnote.down \"b\"\npart.start p\n    note.down \"x\"\n    note.down "
         "\"y\"\npart.end\n");
    follow(pressing(Qt::Key_F11), {pressing(Qt::Key_F11), pressing(Qt::Key_F11, Qt::ShiftModifier), f10()});
    EXPECT_EQ(
        places, (QStringList{u"Held before line 2"_s, u"Held before line 5"_s, u"Held before line 3"_s}));
    EXPECT_EQ(notes().size(), 3);
}

TEST_F(SteppingTest, showsTheLineOfAnotherFileInWords)
{
    folder.addApp(u"app"_s, "");
    recording::writeBytes(
        folder.apps(u"app/parts.wf"_s), "//edition:2\npart.start p\n    note.down \"x\"\npart.end\n");
    edit("//edition:2\npart.use \"parts.wf\"\npart.run p\n");
    follow(f10(), {pressing(Qt::Key_F11), [this] {
                       EXPECT_TRUE(editor().extraSelections().isEmpty());
                       press(Qt::Key_F10);
                   }});
    EXPECT_EQ(
        places, (QStringList{u"Held before line 3"_s, u"Held before line 3 of parts.wf: note.down \"x\""_s}));
}

TEST_F(SteppingTest, aStepOverAQuestionIsHeldBehindItsAnswer)
{
    for (const QByteArray script : {"input.text \"who\",\"Who?\"\r\nnote.down set.who\r\n",
             "//edition:2\r\ninput.text who,\"Who?\"\r\nnote.down set.who\r\n"}) {
        folder.addApp(u"app"_s, script);
        if (!ui.window())
            start();
        Q_EMIT ui.window()->editRequested(u"app"_s);
        platform.log.clear();
        follow(clicking("step"), {f10()});
        ASSERT_TRUE(topLevel("shurubox"));
        EXPECT_EQ(held(), QString());
        EXPECT_TRUE(editor().isReadOnly());
        QString who;
        type(inBox("Text1"), u"Ann"_s);
        follow([] { click(inBox("Label1")); }, {[&] {
            who = valueText(u"who"_s);
            press(Qt::Key_F10);
        }});
        EXPECT_EQ(places.size(), 1);
        EXPECT_EQ(who, u"Ann"_s);
        EXPECT_EQ(notes(), QStringList(u"note Ann"_s));
        EXPECT_FALSE(editor().isReadOnly());
    }
}

TEST_F(SteppingTest, aRunThatIsGivenUpAtAQuestionIsFollowedNoMore)
{
    edit("os.tips \"tip\"\r\nnote.down \"b\"\r\n");
    follow(f10(), {f10()});
    ASSERT_TRUE(topLevel("shurubox"));
    key(inBox("tipsbox"), Qt::Key_Escape);
    EXPECT_TRUE(waitUntil([this] { return !editor().isReadOnly(); }));
    EXPECT_EQ(state.observer, nullptr);
    EXPECT_EQ(notes(), QStringList());
}

TEST_F(SteppingTest, aRunThatWaitsForAnAnswerEndsWithTheNextOne)
{
    edit("input.text \"who\",\"Who?\"\r\nnote.down \"b\"\r\n");
    follow(f10(), {f10()});
    ASSERT_TRUE(topLevel("shurubox"));
    click(find("Image9"));
    EXPECT_FALSE(isEditing());
    folder.addApp(u"app"_s, "note.down \"c\"\r\n");
    Q_EMIT ui.window()->editRequested(u"app"_s);
    follow(clicking("step"), {f10()});
    EXPECT_EQ(places, QStringList(u"Held before line 1"_s));
    EXPECT_EQ(notes(), QStringList(u"note c"_s));
}

TEST_F(SteppingTest, aValueThatIsChangedIsWhatTheNextLineSees)
{
    edit("set.a \"1\"\r\nset.b \"2\"\r\nnote.down set.a\r\n");
    toggle(2);
    follow(f5(), {[this] {
        EXPECT_EQ(valueText(u"text"_s), u"1"_s) << "the argument of the line";
        ASSERT_TRUE(value(u"a"_s));
        values().setCurrentItem(value(u"a"_s));
        values().setFocus();
        key(&values(), Qt::Key_Return);
        auto *entry = values().findChild<QLineEdit *>();
        ASSERT_TRUE(entry);
        entry->setText(u"changed"_s);
        QTest::keyClick(entry, Qt::Key_Return);
        EXPECT_TRUE(waitUntil([this] { return valueText(u"text"_s) == u"changed"_s; }));
        EXPECT_EQ(valueText(u"a"_s), u"changed"_s);
        EXPECT_EQ(valueText(u"b"_s), u"2"_s);
        EXPECT_EQ(values().currentItem(), value(u"a"_s));
        press(Qt::Key_F5);
    }});
    EXPECT_EQ(notes(), QStringList(u"note changed"_s));
}

TEST_F(SteppingTest, onlyVariablesCanBeChanged)
{
    edit("set.a \"1\"\r\nnote.down set.a\r\n");
    toggle(1);
    follow(f5(), {[this] {
        EXPECT_TRUE(value(u"a"_s)->flags() & Qt::ItemIsEditable);
        EXPECT_FALSE(value(u"text"_s)->flags() & Qt::ItemIsEditable);
        EXPECT_FALSE(value(u"Variables"_s)->flags() & Qt::ItemIsEditable);
        press(Qt::Key_F5);
    }});
}

TEST_F(SteppingTest, argumentsThatHaveNoValueSayWhy)
{
    edit("//edition:2\nset.a set.nowhere\n");
    QString said;
    follow(f10(),
        {[&] {
             said = values().topLevelItem(0)->child(0)->text(1);
             press(Qt::Key_F10);
         },
            stopping()});
    EXPECT_EQ(said, u"nowhere was never set"_s);
    EXPECT_EQ(places, (QStringList{u"Held before line 2"_s, u"Line 2 has failed: nowhere was never set"_s}));
    EXPECT_TRUE(hint().startsWith(u"app: stopped at line 2"_s)) << hint().toStdString();
}

TEST_F(SteppingTest, anErrorOfEdition1CanBeStoppedBeforeItEndsTheLauncher)
{
    edit("note.down \"a\"\r\nset.n set.m\r\nmouse.move set.n\r\n");
    toggle(0);
    follow(f5(), {f5(), stopping()});
    EXPECT_TRUE(places.value(1).startsWith(u"Line 3 has failed: "_s)) << places.join(u'\n').toStdString();
    EXPECT_FALSE(said().join(u' ').contains(u"end process"_s));
}

TEST_F(SteppingTest, stopEndsTheRunThatIsHeld)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\n");
    follow(f10(), {f10(), clicking("stopRun")});
    EXPECT_EQ(notes(), QStringList(u"note a"_s));
    EXPECT_TRUE(said().contains(u"release keys"_s));
    EXPECT_TRUE(hint().startsWith(u"app: stopped at line 2"_s)) << hint().toStdString();
    EXPECT_FALSE(stop.isRaised());
    EXPECT_FALSE(watchesHand);
    EXPECT_EQ(state.observer, nullptr);
}

TEST_F(SteppingTest, theHandStopsAHeldRunToo)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\n");
    follow(f10(), {[this] {
        EXPECT_TRUE(watchesHand);
        stop.raise();
    }});
    EXPECT_EQ(notes(), QStringList());
    EXPECT_TRUE(hint().startsWith(u"app: stopped at line 1"_s)) << hint().toStdString();
}

TEST_F(SteppingTest, theLauncherAndItsTraySayThatARunIsHeld)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\n");
    follow(f10(),
        {f10(), [this] {
             EXPECT_TRUE(waitUntil([this] { return hint().startsWith(u"app is held before line 2"_s); }))
                 << hint().toStdString();
             EXPECT_TRUE(hint().contains(u"Stop"_s));
             press(Qt::Key_F10);
         }});
}

TEST_F(SteppingTest, leavingTheEditorStopsAHeldRun)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\n");
    follow(f10(), {f10(), [this] { click(find("Image9")); }});
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(notes(), QStringList(u"note a"_s));
    EXPECT_TRUE(hint().startsWith(u"app: stopped at line 2"_s)) << hint().toStdString();
    Q_EMIT ui.window()->editRequested(u"app"_s);
    EXPECT_FALSE(editor().isReadOnly());
    EXPECT_TRUE(find("step")->isEnabled());
}

TEST_F(SteppingTest, whoeverLeavesTheEditorLetsARunGoThatIsNotHeld)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\nnote.down \"c\"\r\n");
    toggle(2);
    waiter.onWait = [this] {
        if (isEditing())
            click(find("Image9"));
    };
    follow(f5(), {});
    EXPECT_EQ(notes().size(), 3);
    Q_EMIT ui.window()->editRequested(u"app"_s);
    EXPECT_EQ(editor().breakpoints(), QList<int>{2}) << "it is remembered";
}

TEST_F(SteppingTest, theLauncherMayEndWhileARunIsHeld)
{
    edit("note.down \"a\"\r\n");
    follow(f10(), {[this] {
        ui.exit();
        EXPECT_TRUE(said().contains(u"end process 0"_s));
        stop.raise(); // a real process would be over
    }});
    EXPECT_EQ(notes(), QStringList());
}

TEST_F(SteppingTest, aHiddenLauncherHoldsOn)
{
    edit("note.down \"a\"\r\n");
    follow(f10(), {[this] {
        ui.window()->hide();
        QApplication::processEvents();
        EXPECT_FALSE(held().isEmpty());
        ui.fetch();
        EXPECT_TRUE(isEditing());
        EXPECT_TRUE(waitUntil([this] { return ui.window()->isActiveWindow(); }));
        press(Qt::Key_F10);
    }});
    EXPECT_EQ(notes().size(), 1);
}

TEST_F(SteppingTest, theTextStaysAsItIsMeanwhile)
{
    edit("note.down \"a\"\r\n");
    follow(f10(), {[this] {
        type(&editor(), u"x"_s);
        press(Qt::Key_Space, Qt::ControlModifier);
        QInputMethodEvent composed;
        composed.setCommitString(u"你"_s);
        QApplication::sendEvent(&editor(), &composed);
        press(Qt::Key_P, Qt::ControlModifier);
        press(Qt::Key_S, Qt::ControlModifier);
        EXPECT_EQ(editor().script(), u"note.down \"a\""_s);
        EXPECT_FALSE(pickAnswer);
        EXPECT_TRUE(isEditing());
        setCaret(0);
        press(Qt::Key_F10);
    }});
    type(&editor(), u"x"_s);
    EXPECT_EQ(editor().script(), u"xnote.down \"a\""_s);
}

TEST_F(SteppingTest, anAppThatIsDeletedMeanwhileGoesOn)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\n");
    follow(f10(),
        {[this] {
             Q_EMIT ui.window()->deleteRequested(u"app"_s);
             EXPECT_EQ(user.seen.size(), 1);
             find<QAbstractButton>("stepOver")->click(); // the question has taken the keyboard
         },
            f10()});
    EXPECT_EQ(notes().size(), 2);
}

TEST_F(SteppingTest, theLastLineNeedsNoEnd)
{
    for (const QByteArray script : {"note.down \"a\"", "//edition:2\nnote.down \"a\""}) {
        folder.addApp(u"app"_s, script);
        if (!ui.window())
            start();
        Q_EMIT ui.window()->editRequested(u"app"_s);
        editor().moveCursor(QTextCursor::End);
        press(Qt::Key_F9);
        follow(f5(), {f5()});
        EXPECT_EQ(places.size(), 1);
        EXPECT_EQ(editor().breakpoints(), QList<int>{editor().blockCount() - 1});
        press(Qt::Key_F9);
    }
    EXPECT_EQ(notes().size(), 2);
}

TEST_F(SteppingTest, anEmptyScriptIsOverAtOnce)
{
    edit("");
    follow(f10(), {});
    EXPECT_FALSE(editor().isReadOnly());
    EXPECT_EQ(state.observer, nullptr);
}

// A bare line feed ends no line of edition 1, so the editor has more lines than the run.
TEST_F(SteppingTest, linesAreThoseThatTheEditorShows)
{
    edit("//one\n//two\r\nnote.down \"a\"\r\nnote.down \"b\"\r\n");
    toggle(3);
    follow(f5(), {f5()});
    EXPECT_EQ(places, QStringList(u"Held before line 4"_s));
    EXPECT_EQ(notes().size(), 2);
}

TEST_F(SteppingTest, aRunThatLastsIsHeldWhenAskedTo)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\nnote.down \"c\"\r\n");
    toggle(2);
    int waits = 0;
    waiter.onWait = [&] {
        if (++waits == 1)
            press(Qt::Key_F6);
    };
    follow(f5(), {f5(), f5()});
    EXPECT_EQ(places, (QStringList{u"Held before line 2"_s, u"Held before line 3"_s}));
}

TEST_F(SteppingTest, aRunThatGoesOnAlreadyIsNotFollowed)
{
    edit("note.down \"a\"\r\n");
    folder.addApp(u"other"_s, "note.down \"o\"\r\n");
    waiter.onWait = [this] {
        waiter.onWait = {};
        press(Qt::Key_F10);
        EXPECT_EQ(note(), u"Another run goes on. This one can be followed when that one is over."_s);
    };
    follow([this] { ui.runApp(u"other"_s); }, {});
    EXPECT_EQ(notes(), QStringList(u"note o"_s));
    EXPECT_FALSE(editor().isReadOnly());
}

TEST_F(SteppingTest, otherRunsGoTheirWay)
{
    folder.addApp(u"other"_s, "//edition:2\nnote.down \"o\"\n");
    edit("//edition:2\nmouse.l_down\nnote.down \"b\"\n");
    toggle(1);
    waiter.onWait = [this] {
        waiter.onWait = {};
        ui.runApp(u"other"_s);
    };
    follow(f5(), {f10(), f10()});
    EXPECT_EQ(places, (QStringList{u"Held before line 2"_s, u"Held before line 3"_s}));
    EXPECT_EQ(notes(), (QStringList{u"note o"_s, u"note b"_s}));
}

TEST_F(SteppingTest, theWindowInFrontIsSoAgainWhenTheRunGoesOn)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\n");
    follow(f10(),
        {[this] {
             press(Qt::Key_F10);
             platform.windows().foregroundWindow = 7; // by the line
         },
            [this] {
                EXPECT_FALSE(said().contains(u"window activate 7"_s));
                press(Qt::Key_F10);
            }});
    EXPECT_EQ(said().filter(u"activate"_s).size(), 1) << said().join(u'\n').toStdString();
    EXPECT_TRUE(said().filter(u"activate"_s).value(0).endsWith(u" 7"_s));
}

TEST_F(SteppingTest, whoHearsOfRunsHearsOfThisOneToo)
{
    test::RunWitness witness;
    state.observer = &witness;
    edit("note.down \"a\"\r\n");
    follow(f10(), {f10()});
    EXPECT_EQ(witness.heard, (QStringList{u"1 note.down \"a\""_s, u"field 0 a"_s, u"done"_s}));
    EXPECT_EQ(witness.scripts, QStringList(u"app"_s));
    EXPECT_EQ(state.observer, &witness);
    state.observer = nullptr;
}

TEST_F(SteppingTest, theButtonsGoAsTheKeysDo)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\nnote.down \"c\"\r\n");
    follow(clicking("step"), {clicking("stepInto"), clicking("stepOver"), clicking("goOn")});
    EXPECT_EQ(notes().size(), 3);
}

TEST_F(SteppingTest, onlyTheScriptOfAnAppHasBreakpoints)
{
    edit("note.down \"a\"\r\n");
    ui.window()->editPanel().openFile(folder.path() + u"/x.wf"_s, u"note.down \"a\""_s);
    EXPECT_FALSE(find("step")->isVisible());
    press(Qt::Key_F9);
    press(Qt::Key_F10);
    EXPECT_EQ(editor().breakpoints(), QList<int>());
    EXPECT_EQ(notes(), QStringList());
}

TEST(StepViewTest, itsButtonsHaveTheirWholeCaptionsHoweverNarrowItIs)
{
    StepView view(nullptr);
    view.setStyleSheet(Theme::of(QApplication::palette()).styleSheet());
    view.show();
    const QList<QPushButton *> buttons = view.findChildren<QPushButton *>();
    int oneRow = 0;
    for (const QPushButton *button : buttons)
        oneRow += button->sizeHint().width();
    const int narrowest = view.minimumSizeHint().width();
    EXPECT_LT(narrowest, oneRow);
    for (const int width : {narrowest, oneRow * 2, narrowest}) {
        view.resize(width, 260);
        QApplication::processEvents();
        EXPECT_EQ(view.width(), width);
        for (const QPushButton *button : buttons) {
            EXPECT_GE(button->width(), button->sizeHint().width())
                << width << ": " << button->text().toStdString();
            EXPECT_TRUE(view.rect().contains(button->geometry())) << button->text().toStdString();
        }
    }
}

} // namespace plum
