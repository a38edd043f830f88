#include "desktop/support/search_test.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QRect onTheLeft{100, 60, 320, 250};
constexpr QRect onTheRight{1500, 200, 320, 250};

// A desktop of 2560 x 900 whose main screen is the left half.
class SearchScreens : public SearchTest
{
protected:
    void SetUp() override
    {
        startDesktop(u"openbox"_s, u"us"_s, {2560, 900});
        // Clock and blanking matter to no server without a monitor.
        xrandr({u"--newmode"_s, u"half"_s, u"100"_s, u"1280"_s, u"1300"_s, u"1400"_s, u"1500"_s, u"900"_s,
            u"910"_s, u"920"_s, u"930"_s});
        xrandr({u"--addmode"_s, u"screen"_s, u"half"_s});
    }

    void xrandr(const QStringList &arguments) { outputOf(u"xrandr"_s, arguments); }

    void placeScreensSideBySide()
    {
        xrandr({u"--fb"_s, u"2560x900"_s, u"--output"_s, u"screen"_s, u"--mode"_s, u"half"_s, u"--primary"_s});
        xrandr({u"--setmonitor"_s, u"right"_s, u"1280/300x900/200+1280+0"_s, u"none"_s});
    }
};

} // namespace

TEST_F(SearchScreens, withoutARegionIsTheMainOne)
{
    placeScreensSideBySide();
    showPicture(onTheRight);
    run({u"set.spot \"none\""_s, findPart(u""_s, u""_s, u"spot"_s), logLine(u"spot"_s),
        findMark(u""_s, u""_s, u"spot"_s), logLine(u"spot"_s)});
    EXPECT_EQ(logged(), (QStringList{u"none"_s, u"none"_s}));
}

TEST_F(SearchScreens, areBothReachedByARegion)
{
    placeScreensSideBySide();
    showPicture(onTheRight, u"Right"_s);
    const QPoint right = onScreen({0, 0});
    const auto rightWindow = std::move(painter);
    showPicture(onTheLeft, u"Left"_s);
    const QPoint left = onScreen({0, 0});

    const QString second = asRegion({1280, 0, 1280, 900});
    run({findPart(u""_s, u""_s, u"spot"_s), logLine(u"spot"_s), findPart(second, u""_s, u"spot"_s),
        logLine(u"spot"_s), findMark(u""_s, u""_s, u"spot"_s), logLine(u"spot"_s),
        findMark(second, u""_s, u"spot"_s), logLine(u"spot"_s), findMark(second, u""_s, u"move"_s)});
    EXPECT_EQ(logged(),
        (QStringList{asText(left + part.topLeft()), asText(right + part.topLeft()), asText(left + firstMark),
            asText(right + firstMark)}));
    EXPECT_EQ(view->pointer(), right + firstMark);
}

TEST_F(SearchScreens, mayChangeTheirSizeWhileAScriptSearches)
{
    showPicture(onTheLeft);
    const QString spot = asText(onScreen(firstMark));
    start({u"while.start \"count\",\"1000000\""_s, u"set.spot \"none\""_s, findMark(u""_s, u""_s, u"spot"_s),
        logLine(u"spot"_s), u"set.spot \"none\""_s,
        findMark(asRegion({0, 0, 2560, 900}), u""_s, u"spot"_s), logLine(u"spot"_s), u"while.end"_s});
    for (int change = 0; change < 20; ++change) {
        const qsizetype before = logged().size();
        xrandr({u"--output"_s, u"screen"_s, u"--mode"_s, change % 2 == 0 ? u"half"_s : u"2560x900"_s});
        ASSERT_TRUE(eventually([&] { return logged().size() > before + 4; })) << change;
    }
    program().terminate();
    expectGoodEnd();
    EXPECT_EQ(logged().count(spot), logged().size());
}

} // namespace plum
