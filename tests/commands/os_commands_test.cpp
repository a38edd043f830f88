#include "engine/run_time_error.h"
#include "support/script_bench.h"

#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::ScriptBench;

namespace {

class OsCommandsTest : public testing::Test
{
protected:
    OsCommandsTest()
    {
        bench.platform.screen().size = QSize(120, 110);
        bench.platform.screen().pixels.assign(120 * 110, 0xffffff);
        bench.platform.pointer().at = QPoint(7, 8);
    }

    void paint(int x, int y, quint32 pixel)
    {
        bench.platform.screen().pixels[static_cast<size_t>(y * 120 + x)] = pixel;
    }

    // Saves an unframed picture of 4 by 4 and paints it on the screen. Its last row and column do not count.
    QString picture(int x, int y)
    {
        QImage image(4, 4, QImage::Format_RGB32);
        for (int row = 0; row < 4; ++row) {
            for (int column = 0; column < 4; ++column) {
                const quint32 pixel = row + column * column < 2 ? 0x000000 : 0xff8040;
                image.setPixel(column, row, pixel | 0xff000000);
                paint(x + column, y + row, pixel);
            }
        }
        const QString path = folder.filePath(u"a picture.png"_s);
        EXPECT_TRUE(image.save(path));
        return QString(path).replace(u'/', u'\\');
    }

    int errorOf(const QString &line)
    {
        try {
            bench.run({line});
        } catch (const RunTimeError &error) {
            return error.number();
        }
        return 0;
    }

    ScriptBench bench;
    QTemporaryDir folder;
};

} // namespace

TEST_F(OsCommandsTest, WordsAreTestedInTheTablesOrder)
{
    QStringList words;
    for (const CommandInfo &info : bench.handler(u"os"_s).commands())
        words += info.word.toString();
    EXPECT_EQ(words,
        (QStringList{u"find_pic"_s, u"find_color"_s, u"set_clipboard"_s, u"get_clipboard"_s, u"tips"_s,
            u"lock_screen"_s, u"off_monitor"_s, u"log_off"_s, u"shut_down"_s, u"restart"_s, u"run"_s,
            u"窗口最小化"_s}));
}

TEST_F(OsCommandsTest, UnknownCommandDoesNothing)
{
    EXPECT_EQ(bench.eventsOf(u"os.find_colour \"FF0000\""_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"os.Lock_screen"_s), QStringList());
}

TEST_F(OsCommandsTest, SetClipboardClearsFirstAndLeavesExactlyTheText)
{
    EXPECT_EQ(bench.eventsOf(u"os.set_clipboard \"hello\""_s),
        (QStringList{u"clipboard clear"_s, u"clipboard set hello"_s}));
}

TEST_F(OsCommandsTest, GetClipboardStoresTheTextAndTheEmptyTextToo)
{
    bench.platform.clipboard().content = u"copied"_s;
    bench.runKeepingVariables({u"os.get_clipboard \"v\""_s});
    EXPECT_EQ(bench.variable(u"v"_s), u"copied"_s);
    bench.platform.clipboard().content.clear();
    bench.runKeepingVariables({u"set.v \"old\""_s, u"os.get_clipboard \"v\""_s});
    EXPECT_TRUE(bench.state.vardict.contains(u"v"_s));
    EXPECT_EQ(bench.variable(u"v"_s), QString());
}

TEST_F(OsCommandsTest, ClipboardCommandsTakeOnlyTheirFirstField)
{
    EXPECT_EQ(bench.eventsOf(u"os.set_clipboard \"a\",\"b\""_s).last(), u"clipboard set a"_s);
    bench.runKeepingVariables({u"os.get_clipboard \"v\",\"w\""_s});
    EXPECT_EQ(bench.variable(u"v"_s), u"a"_s);
    EXPECT_EQ(bench.state.vardict.size(), 1);
}

TEST_F(OsCommandsTest, TipsShowsTheTextAndSuspendsTheRun)
{
    bench.run({u"os.tips \"done\":\"no\""_s, u"mouse.l_down"_s});
    EXPECT_EQ(bench.events(), (QStringList{u"wait 10"_s, u"tip done"_s}));
    EXPECT_EQ(bench.state.runidx[0], 1);
}

TEST_F(OsCommandsTest, TipOfAnUnknownVariableIsEmpty)
{
    bench.run({u"os.tips set.nothing"_s});
    EXPECT_EQ(bench.events(), (QStringList{u"wait 10"_s, u"tip "_s}));
}

TEST_F(OsCommandsTest, SessionCommandsReachTheSession)
{
    EXPECT_EQ(bench.eventsOf(u"os.lock_screen"_s), QStringList(u"session lock"_s));
    EXPECT_EQ(bench.eventsOf(u"os.off_monitor"_s), QStringList(u"session monitor off"_s));
    EXPECT_EQ(bench.eventsOf(u"os.log_off"_s), QStringList(u"session log off"_s));
    EXPECT_EQ(bench.eventsOf(u"os.shut_down"_s), QStringList(u"session shut down"_s));
    EXPECT_EQ(bench.eventsOf(u"os.restart"_s), QStringList(u"session restart"_s));
}

TEST_F(OsCommandsTest, LockAndMonitorWithoutAServiceTellThePersonAndTheScriptGoesOn)
{
    bench.platform.session().outcome = Session::Outcome::Unavailable;
    for (const QString &line : {u"os.lock_screen"_s, u"os.off_monitor"_s}) {
        const QStringList events = bench.eventsOf(line);
        ASSERT_EQ(events.size(), 2);
        EXPECT_TRUE(events[1].startsWith(u"notice "_s)) << events[1].toStdString();
    }
}

TEST_F(OsCommandsTest, EndingTheSessionWithoutAServiceIsTheErrorOfStartingAProgram)
{
    bench.platform.session().outcome = Session::Outcome::Unavailable;
    for (const QString &line : {u"os.log_off"_s, u"os.shut_down"_s, u"os.restart"_s})
        EXPECT_EQ(errorOf(line), 53) << line.toStdString();
}

TEST_F(OsCommandsTest, MinimisesTheWindowWithExactlyTheTitle)
{
    bench.platform.windows().titles.insert(u"Report"_s, 42);
    EXPECT_EQ(bench.eventsOf(u"os.窗口最小化 Report"_s), QStringList(u"window minimise 42"_s));
    EXPECT_EQ(bench.eventsOf(u"os.窗口最小化 report"_s), QStringList(u"window minimise 0"_s));
}

TEST_F(OsCommandsTest, TitleIsTheWholeArgumentTextWithItsCommas)
{
    bench.platform.windows().titles.insert(u"Report, page \"1\""_s, 43);
    EXPECT_EQ(bench.eventsOf(u"os.窗口最小化 Report, page \"1\""_s), QStringList(u"window minimise 43"_s));
}

TEST_F(OsCommandsTest, TitleKeepsTheEscapeOfACommaAsItIsWritten)
{
    bench.platform.windows().titles.insert(u"a_,_b, c"_s, 44);
    EXPECT_EQ(bench.eventsOf(u"os.窗口最小化 a_,_b, c"_s), QStringList(u"window minimise 44"_s));
}

TEST_F(OsCommandsTest, FindColorSeesLayeredWindowsAndFindPicDoesNot)
{
    auto &screen = bench.platform.screen();
    screen.plainPixels = screen.pixels;
    const QString path = picture(30, 20); // in a layered window
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"FF8040\",,,\"move\""_s).size(), 1);
    EXPECT_EQ(bench.eventsOf(u"os.find_pic \"%1\",,,\"move\""_s.arg(path)), QStringList());
    screen.plainPixels = screen.pixels;
    EXPECT_EQ(bench.eventsOf(u"os.find_pic \"%1\",,,\"move\""_s.arg(path)), QStringList(u"move 30 20"_s));
}

TEST_F(OsCommandsTest, FindColorMovesToTheFirstPureRedPixelOfTheSquare)
{
    paint(110, 0, 0xff0000); // outside the region
    paint(40, 30, 0xff0001);
    paint(90, 31, 0xff0000);
    paint(20, 32, 0xff0000);
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"FF0000\",\"0:0:100:100\",,\"move\""_s),
        QStringList(u"move 90 31"_s));
}

TEST_F(OsCommandsTest, FindColorScansARowFromTheLeft)
{
    paint(60, 5, 0x00ff00);
    paint(50, 5, 0x00ff00);
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"00FF00\",,,\"move\""_s), QStringList(u"move 50 5"_s));
}

TEST_F(OsCommandsTest, GetXyStoresThePoint)
{
    paint(10, 20, 0x00ff00);
    bench.runKeepingVariables({u"os.find_color \"00FF00\",,,\"get_xy\""_s});
    EXPECT_EQ(bench.variable(u"tarnwick_xy"_s), u"10:20"_s);
    bench.runKeepingVariables({u"os.find_color \"00FF00\",,,\"get_x\""_s});
    EXPECT_EQ(bench.variable(u"tarnwick_xy"_s), u"10"_s);
    bench.runKeepingVariables({u"os.find_color \"00FF00\",,,\"get_y\""_s});
    EXPECT_EQ(bench.variable(u"tarnwick_xy"_s), u"20"_s);
}

TEST_F(OsCommandsTest, AnyOtherActionIsTheVariable)
{
    paint(10, 20, 0x00ff00);
    bench.runKeepingVariables({u"os.find_color \"00FF00\",,,\"Click\""_s});
    EXPECT_EQ(bench.variable(u"Click"_s), u"10:20"_s);
}

TEST_F(OsCommandsTest, NoActionDoesNothing)
{
    paint(10, 20, 0x00ff00);
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"00FF00\",,,"_s), QStringList());
    EXPECT_EQ(bench.state.vardict.size(), 0);
}

TEST_F(OsCommandsTest, ClicksLandOnThePointAndRightClickStays)
{
    paint(10, 20, 0x00ff00);
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"00FF00\",,,\"click\""_s),
        (QStringList{u"move 10 20"_s, u"mouse 2"_s, u"wait 200"_s, u"mouse 4"_s, u"wait 200"_s}));
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"00FF00\",,,\"d_click\""_s),
        (QStringList{u"move 10 20"_s, u"mouse 6"_s, u"mouse 6"_s, u"wait 100"_s}));
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"00FF00\",,,\"r_click\""_s),
        (QStringList{u"mouse 8"_s, u"mouse 16"_s}));
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"00FF00\",,,\"set_clipboard\""_s),
        (QStringList{u"clipboard clear"_s, u"clipboard set 10:20"_s}));
}

TEST_F(OsCommandsTest, OffsetMovesTheClick)
{
    paint(10, 20, 0x00ff00);
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"00FF00\",,\"5:5\",\"click\""_s).first(), u"move 15 25"_s);
}

TEST_F(OsCommandsTest, PointCountsFromTheScreenNotFromTheRegion)
{
    paint(50, 60, 0x00ff00);
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"00FF00\",\"45:50:20:20\",\"-1:2\",\"move\""_s),
        QStringList(u"move 49 62"_s));
}

TEST_F(OsCommandsTest, OffsetWrapsAtSixteenBits)
{
    paint(10, 20, 0x00ff00);
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"00FF00\",,\"32767:-32768\",\"move\""_s),
        QStringList(u"move -32759 -32748"_s));
}

TEST_F(OsCommandsTest, RegionBeyondSixteenBitsWrapsInThePoint)
{
    // Off the desktop everything is black.
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"000000\",\"100000:70000:10:10\",,\"move\""_s),
        QStringList(u"move -31072 4464"_s));
}

TEST_F(OsCommandsTest, NothingFoundLeavesVariablesClipboardAndPointer)
{
    bench.platform.clipboard().content = u"kept"_s;
    for (const QString &action : {u"click"_s, u"move"_s, u"get_xy"_s, u"set_clipboard"_s, u"other"_s})
        EXPECT_EQ(bench.eventsOf(u"os.find_color \"123456\",,,\"%1\""_s.arg(action)), QStringList());
    EXPECT_EQ(bench.state.vardict.size(), 0);
    EXPECT_EQ(bench.platform.clipboard().content, u"kept"_s);
}

TEST_F(OsCommandsTest, MalformedColoursAreTypeMismatches)
{
    for (const QString &colour : {u"GG0000"_s, u"FF000"_s, u"FF00"_s, u" FF000"_s, u"#FF000"_s, u"0xFF00"_s})
        EXPECT_EQ(errorOf(u"os.find_color \"%1\",,,"_s.arg(colour)), 13) << colour.toStdString();
    EXPECT_EQ(errorOf(u"os.find_color ,,,"_s), 13);
    // What follows the six digits does not count.
    EXPECT_EQ(errorOf(u"os.find_color \"ffffff7\",,,"_s), 0);
}

TEST_F(OsCommandsTest, MalformedRegionsAndOffsetsRaiseTheirErrors)
{
    EXPECT_EQ(errorOf(u"os.find_color \"FF0000\",\"1:2:3:x\",,"_s), 13);
    EXPECT_EQ(errorOf(u"os.find_color \"FF0000\",\"1:2:3\",,"_s), 9);
    EXPECT_EQ(errorOf(u"os.find_color \"FF0000\",\"0:0:2147483648:1\",,"_s), 6);
    EXPECT_EQ(errorOf(u"os.find_color \"FF0000\",,\"32768:0\","_s), 6);
    EXPECT_EQ(errorOf(u"os.find_color \"FF0000\",,"_s), 9);
}

TEST_F(OsCommandsTest, RegionOfOneNumberIsAllFour)
{
    paint(12, 13, 0x00ff00);
    paint(21, 0, 0x00ff00); // outside 10:10:10:10
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"00FF00\",\"10\",,\"move\""_s), QStringList(u"move 12 13"_s));
}

TEST_F(OsCommandsTest, EnormousRegionsAreSearchedByTheSameRules)
{
    paint(12, 13, 0x00ff00);
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"00FF00\",\"0:0:2147483647:2147483647\",,\"move\""_s),
        QStringList(u"move 12 13"_s));
    EXPECT_EQ(bench.eventsOf(
                  u"os.find_color \"00FF00\",\"-2147483648:-2147483648:2147483647:2147483647\",,\"move\""_s),
        QStringList());
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"000000\",\"0:0:2147483647:2147483647\",,\"move\""_s),
        QStringList(u"move 120 0"_s));
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"000000\",\"0:0:120:2147483647\",,\"move\""_s),
        QStringList(u"move 0 110"_s));
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"000000\",\"0:0:0:5\",,\"move\""_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"000000\",\"0:0:-5:5\",,\"move\""_s), QStringList());
}

TEST_F(OsCommandsTest, WithoutADesktopNothingIsFound)
{
    bench.platform.screen().size = QSize();
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"000000\",,,\"move\""_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"000000\",\"0:0:10:10\",,\"move\""_s), QStringList());
}

TEST_F(OsCommandsTest, MissingPictureIsReportedAndNothingElseHappens)
{
    EXPECT_EQ(bench.eventsOf(u"os.find_pic missing.bmp"_s),
        QStringList(u"message ERR : Wrong !|imagemissing.bmpcan not finf|16"_s));
}

TEST_F(OsCommandsTest, MissingPictureIsNamedByItsResolvedPath)
{
    bench.state.runctx[0] = u"C:\\a\\main.wf"_s;
    EXPECT_EQ(bench.eventsOf(u"os.find_pic \"_pfold_/b/c.bmp\",,,\"click\""_s),
        QStringList(u"message ERR : Wrong !|imageC:\\a\\b\\c.bmpcan not finf|16"_s));
}

TEST_F(OsCommandsTest, FolderAsPictureIsMissing)
{
    const QString path = QString(folder.path()).replace(u'/', u'\\');
    EXPECT_EQ(bench.eventsOf(u"os.find_pic \"%1\",,,\"click\""_s.arg(path)),
        QStringList(u"message ERR : Wrong !|image%1can not finf|16"_s.arg(path)));
}

TEST_F(OsCommandsTest, FindPicActsAtThePicturesCorner)
{
    const QString path = picture(30, 40);
    EXPECT_EQ(bench.eventsOf(u"os.find_pic \"%1\",,,\"move\""_s.arg(path)), QStringList(u"move 30 40"_s));
    EXPECT_EQ(bench.eventsOf(u"os.find_pic \"%1\",\"20:20:50:50\",\"5:5\",\"click\""_s.arg(path)).first(),
        u"move 35 45"_s);
    bench.runKeepingVariables({u"os.find_pic \"%1\",,,\"where\""_s.arg(path)});
    EXPECT_EQ(bench.variable(u"where"_s), u"30:40"_s);
}

TEST_F(OsCommandsTest, FindPicToleratesHalfABlackAndMuchGreen)
{
    const QString path = picture(30, 40);
    paint(30, 40, 0x58ddff); // template black: at the edge of the tolerance
    EXPECT_EQ(bench.eventsOf(u"os.find_pic \"%1\",,,\"move\""_s.arg(path)), QStringList(u"move 30 40"_s));
    paint(30, 40, 0x590000); // one too red
    EXPECT_EQ(bench.eventsOf(u"os.find_pic \"%1\",,,\"move\""_s.arg(path)), QStringList());
    paint(30, 40, 0x00de00); // one too green
    EXPECT_EQ(bench.eventsOf(u"os.find_pic \"%1\",,,\"move\""_s.arg(path)), QStringList());
}

TEST_F(OsCommandsTest, PictureInTheLastColumnsIsBeyondTheLastShift)
{
    const QString path = picture(114, 104); // 120 - 4 - 2, 110 - 4 - 2
    EXPECT_EQ(bench.eventsOf(u"os.find_pic \"%1\",,,\"move\""_s.arg(path)), QStringList(u"move 114 104"_s));
    EXPECT_EQ(bench.eventsOf(u"os.find_pic \"%1\",\"0:0:119:110\",,\"move\""_s.arg(path)), QStringList());
}

TEST_F(OsCommandsTest, UnreadablePictureIsNeverFoundAndHarmless)
{
    QFile file(folder.filePath(u"broken.png"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no picture at all");
    file.close();
    const QString path = QString(file.fileName()).replace(u'/', u'\\');
    EXPECT_EQ(bench.eventsOf(u"os.find_pic \"%1\",,,\"move\""_s.arg(path)), QStringList());
}

TEST_F(OsCommandsTest, WordsOfMouseAfterOffsetAreVariablesToASearch)
{
    paint(10, 20, 0x00ff00);
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"00FF00\",\"\",\"\",\"tips\""_s), QStringList());
    EXPECT_EQ(bench.variable(u"tips"_s), u"10:20");
    EXPECT_EQ(bench.eventsOf(u"os.find_color \"00FF00\",\"\",\"\",\"\""_s), QStringList());
}
