// The lines that are written, under the eyes of the checker and in a run.
#include "picker/picked_lines.h"

#include "check/script_check.h"
#include "engine/run_start.h"
#include "picker/picked_picture.h"
#include "support/script_bench.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// A desktop with one patch of stripes, and a script of either edition in a folder.
class PickedLinesTest : public testing::TestWithParam<Edition>
{
protected:
    PickedLinesTest()
    {
        recording::RecordingScreen &screen = bench.platform.screen();
        screen.size = {100, 80};
        screen.pixels.assign(100 * 80, 0x102030);
        for (int row = 40; row < 50; ++row) {
            for (int column = 60; column < 75; ++column)
                screen.pixels[std::size_t(row * 100 + column)] = (column + row) % 3 ? 0xe01000 : 0x00ff00;
        }
    }

    DesktopView view()
    {
        return DesktopView::take(bench.platform.screen(), bench.platform.windows()).value();
    }

    QByteArray scriptOf(const QStringList &lines) const
    {
        const QByteArray head = GetParam() == Edition::Two ? "//edition:2\r\n" : "";
        return head + lines.join(u"\r\n"_s).toUtf8() + "\r\n";
    }

    // Neither errors nor warnings, but for what is asked for and not used yet.
    void expectGood(const QStringList &lines)
    {
        const ScriptCheck check(bench.system.vocabulary());
        for (const Finding &finding : check.check(scriptOf(lines), files.folder())) {
            EXPECT_TRUE(finding.severity == Severity::Hint || finding.rule == u"never-read"_s)
                << lines.join(u'\n').toStdString() << ": " << finding.message.toStdString();
        }
    }

    // Where the pointer goes.
    QStringList movesOf(const QStringList &lines)
    {
        EXPECT_TRUE(bench.system.starts().prepareFile(files.write(u"main.wf"_s, scriptOf(lines))));
        bench.platform.log.clear();
        bench.system.starts().runAll();
        return bench.events().filter(u"move "_s);
    }

    recording::ScriptBench bench;
    test::TemporaryFiles files;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Editions, PickedLinesTest, testing::Values(Edition::One, Edition::Two),
    [](const auto &edition) { return edition.param == Edition::One ? "One" : "Two"; });

TEST_P(PickedLinesTest, aPointIsWhereThePointerGoes)
{
    QStringList lines;
    for (const QPoint point : {QPoint(60, 40), QPoint(0, 0), QPoint(-1280, -5)})
        lines += linesFor(PickedLine::Move, {.point = point}, GetParam());
    expectGood(lines);
    EXPECT_EQ(movesOf(lines), QStringList({u"move 60 40"_s, u"move 0 0"_s, u"move -1280 -5"_s}));
}

TEST_P(PickedLinesTest, aColourIsFound)
{
    const QStringList lines = linesFor(PickedLine::Colour, pointIn(view(), {62, 40}), GetParam());
    expectGood(lines);
    EXPECT_EQ(movesOf(lines), QStringList(u"move 62 40"_s));
}

// Digits that are a number, a power of ten, and a word.
TEST_P(PickedLinesTest, anyColourIsOne)
{
    QStringList lines;
    QStringList moves;
    for (const QRgb colour : {0x000000U, 0x000012U, 0x1e5000U, 0x123456U, 0xabcdefU}) {
        const auto column = static_cast<int>(moves.size());
        bench.platform.screen().pixels[static_cast<std::size_t>(column)] = colour;
        lines += linesFor(PickedLine::Colour, {.point = {}, .colour = colour}, GetParam());
        moves += u"move %1 0"_s.arg(column);
    }
    expectGood(lines);
    EXPECT_EQ(movesOf(lines), moves);
}

TEST_P(PickedLinesTest, aWindowIsAskedForWhereThePointerHasGone)
{
    bench.platform.windows().windowUnderPointer = 7;
    const QStringList lines = linesFor(PickedLine::Window, {.point = {60, 40}}, GetParam());
    expectGood(lines);
    EXPECT_EQ(movesOf(lines), QStringList(u"move 60 40"_s));
}

TEST_P(PickedLinesTest, aPictureIsFoundWhereTheTrialSaw)
{
    const PickedPicture picked = savePicture(view(), {58, 38, 19, 14}, files.folder());
    EXPECT_EQ(picked.report.at(1), u"It is found once on this screen."_s);
    const QStringList lines{lineForPicture(picked.fileName, GetParam())};
    expectGood(lines);
    EXPECT_EQ(movesOf(lines), QStringList(u"move 60 40"_s));
}

TEST(PickedLinesText, isShortInEdition2)
{
    const PickedPoint point{.point = {60, 40}, .colour = 0x0000ff};
    EXPECT_EQ(linesFor(PickedLine::Move, point, Edition::Two), QStringList(u"mouse.move 60:40"_s));
    EXPECT_EQ(
        linesFor(PickedLine::Colour, point, Edition::Two), QStringList(u"os.find_color 0000FF,,,move"_s));
    EXPECT_EQ(linesFor(PickedLine::Window, point, Edition::Two),
        QStringList({u"mouse.move 60:40"_s, u"window.get mouse_window,window"_s}));
    EXPECT_EQ(lineForPicture(u"a.png"_s, Edition::Two), u"os.find_pic \"_pfold_/a.png\",,,move"_s);
}

TEST(PickedLinesText, hasQuotesInEdition1)
{
    const PickedPoint point{.point = {60, 40}, .colour = 0x0000ff};
    EXPECT_EQ(linesFor(PickedLine::Move, point, Edition::One), QStringList(u"mouse.move \"60:40\""_s));
    EXPECT_EQ(linesFor(PickedLine::Colour, point, Edition::One),
        QStringList(u"os.find_color \"0000FF\",\"\",\"\",\"move\""_s));
    EXPECT_EQ(
        lineForPicture(u"a.png"_s, Edition::One), u"os.find_pic \"_pfold_\\a.png\",\"\",\"\",\"move\""_s);
}

} // namespace plum
