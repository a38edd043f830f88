#include "support/second_edition.h"
#include "support/temporary_files.h"

#include <QImage>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::recording::failureOf;
using plum::recording::ScriptBench;
using plum::test::TemporaryFiles;

namespace {

constexpr quint32 red = 0xff0000;

class WaitCommands : public testing::Test
{
protected:
    WaitCommands()
    {
        bench.platform.screen().size = {8, 8};
        bench.platform.screen().pixels.assign(64, 0xffffff);
    }

    void afterWaits(int count, const std::function<void()> &happen)
    {
        bench.waiter.onWait = [this, count, happen, waits = 0]() mutable {
            if (++waits == count)
                happen();
        };
    }

    void paint(int x, int y, quint32 colour)
    {
        bench.platform.screen().pixels[std::size_t(y * 8 + x)] = colour;
    }

    ScriptBench bench;
    TemporaryFiles files;
};

} // namespace

TEST_F(WaitCommands, AColourIsStoredWithItsPlaceOnTheScreen)
{
    afterWaits(3, [&] { paint(5, 6, red); });
    EXPECT_FALSE(failureOf(bench, u"wait.color"_s, {u"FF0000"_s, u"4:4:4:4"_s, {}, u"at"_s}));
    EXPECT_EQ(bench.variable(u"at"_s), u"5:6"_s);
    EXPECT_EQ(bench.events().count(u"wait 50"_s), 3);
}

TEST_F(WaitCommands, AColourThatDoesNotComeIsAnErrorAfterTenSeconds)
{
    EXPECT_EQ(failureOf(bench, u"wait.color"_s, {u"FF0000"_s, {}, {}, u"at"_s}),
        u"the colour FF0000 was not seen within 10000 ms"_s);
    EXPECT_EQ(bench.waiter.elapsed, 10'000);
    EXPECT_FALSE(bench.state.vardict.contains(u"at"_s));
}

TEST_F(WaitCommands, APictureIsWaitedFor)
{
    const QString path = files.folder() + u"/button.png"_s;
    // Its corners differ, so that all of it is looked for.
    QImage picture(2, 2, QImage::Format_RGB32);
    const auto colourAt = [](int x, int y) { return red + static_cast<quint32>(y * 2 + x); };
    for (const QPoint at : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(1, 1)})
        picture.setPixel(at, 0xff000000 | colourAt(at.x(), at.y()));
    ASSERT_TRUE(picture.save(path));
    afterWaits(2, [&] {
        for (const QPoint at : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(1, 1)})
            paint(3 + at.x(), 3 + at.y(), colourAt(at.x(), at.y()));
    });
    EXPECT_FALSE(failureOf(bench, u"wait.picture"_s, {path, {}, u"500"_s, u"at"_s}));
    EXPECT_EQ(bench.variable(u"at"_s), u"3:3"_s);
    EXPECT_EQ(failureOf(bench, u"wait.picture"_s, {u"/no/such.png"_s, {}, u"500"_s, {}}),
        u"there is no picture /no/such.png"_s);
}

TEST_F(WaitCommands, AWindowIsStoredByItsHandle)
{
    afterWaits(2, [&] { bench.platform.windows().titles[u"Editor"_s] = 7; });
    EXPECT_FALSE(failureOf(bench, u"wait.window"_s, {u"Editor"_s, u"200"_s, u"h"_s}));
    EXPECT_EQ(bench.variable(u"h"_s), u"7"_s);
    EXPECT_EQ(failureOf(bench, u"wait.window"_s, {u"Other"_s, u"200"_s, {}}),
        u"no window had the title \"Other\" within 200 ms"_s);
}

TEST_F(WaitCommands, AWindowThatGoesIsWaitedFor)
{
    bench.platform.windows().rectangles[7] = {0, 0, 10, 10};
    EXPECT_EQ(
        failureOf(bench, u"wait.gone"_s, {u"7"_s, u"100"_s}), u"the window 7 did not go within 100 ms"_s);
    afterWaits(1, [&] { bench.platform.windows().rectangles.remove(7); });
    EXPECT_FALSE(failureOf(bench, u"wait.gone"_s, {u"7"_s, u"100"_s}));
}

TEST_F(WaitCommands, AFileIsWaitedFor)
{
    const QString path = files.folder() + u"/late.txt"_s;
    afterWaits(2, [&] { files.write(u"late.txt"_s, "x"); });
    EXPECT_FALSE(failureOf(bench, u"wait.file"_s, {path, u"5000"_s}));
    EXPECT_EQ(failureOf(bench, u"wait.file"_s, {path + u"2"_s, u"100"_s}),
        u"%1 did not come within 100 ms"_s.arg(path + u"2"_s));
}

TEST_F(WaitCommands, AChangeIsOneOfTheRegionAlone)
{
    afterWaits(1, [&] { paint(0, 0, red); });
    EXPECT_TRUE(failureOf(bench, u"wait.change"_s, {u"4:4:4:4"_s, u"200"_s}));
    afterWaits(1, [&] { paint(5, 5, red); });
    EXPECT_FALSE(failureOf(bench, u"wait.change"_s, {u"4:4:4:4"_s, u"200"_s}));
}
