#include "desktop/support/search_test.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QRect onTheLeft{100, 60, 320, 250};
constexpr QRect onTheRight{1500, 200, 320, 250};

// A desktop of 2560 x 900 that can be cut in two.
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

    // The main screen is the left half.
    void placeScreensSideBySide()
    {
        xrandr(
            {u"--fb"_s, u"2560x900"_s, u"--output"_s, u"screen"_s, u"--mode"_s, u"half"_s, u"--primary"_s});
        xrandr({u"--setmonitor"_s, u"right"_s, u"1280/300x900/200+1280+0"_s, u"none"_s});
    }
};

} // namespace

TEST_F(SearchScreens, withoutARegionIsTheMainOne)
{
    placeScreensSideBySide();
    showPicture(onTheRight);
    run({u"set.spot \"none\""_s, findPart(u""_s, u""_s, u"spot"_s), logLine(u"spot"_s),
        findMark(u""_s, u""_s, u"spot"_s), logLine(u"spot"_s),
        findMark(asRegion({0, 0, 2560, 900}), u""_s, u"spot"_s), logLine(u"spot"_s)});
    EXPECT_EQ(logged(), (QStringList{u"none"_s, u"none"_s, asText(onScreen(firstMark))}));
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
        findMark(second, u""_s, u"spot"_s), logLine(u"spot"_s)});
    EXPECT_EQ(logged(),
        (QStringList{asText(left + part.topLeft()), asText(right + part.topLeft()), asText(left + firstMark),
            asText(right + firstMark)}));
}

TEST_F(SearchScreens, areBothClickedOn)
{
    // The server keeps the pointer on what its single output shows, so here that shows both halves, and
    // programs are told that these are two screens.
    xrandr({u"--setmonitor"_s, u"*left"_s, u"1280/300x900/200+0+0"_s, u"screen"_s});
    xrandr({u"--setmonitor"_s, u"right"_s, u"1280/300x900/200+1280+0"_s, u"none"_s});
    showPicture(onTheRight, u"Right"_s);
    const QPoint right = onScreen(firstMark);
    const auto rightWindow = std::move(painter);
    showPicture(onTheLeft, u"Left"_s);
    const QPoint left = onScreen(part.topLeft());

    run({findMark(asRegion({1280, 0, 1280, 900}), u""_s, u"click"_s)});
    EXPECT_TRUE(rightWindow->sees(u"button up 1 %1 %2"_s.arg(right.x()).arg(right.y())));
    EXPECT_EQ(view->pointer(), right);
    run({findPart(asRegion({0, 0, 1280, 900}), u""_s, u"click"_s)});
    EXPECT_TRUE(painter->sees(u"button up 1 %1 %2"_s.arg(left.x()).arg(left.y())));
    EXPECT_EQ(view->pointer(), left);
}

TEST_F(SearchScreens, mayChangeTheirSizeWhileAScriptSearches)
{
    showPicture(onTheLeft);
    const QString spot = asText(onScreen(firstMark));
    start({u"while.start \"count\",\"30000\""_s, u"set.spot \"none\""_s, findMark(u""_s, u""_s, u"spot"_s),
        logLine(u"spot"_s), u"set.spot \"none\""_s, findMark(asRegion({0, 0, 2560, 900}), u""_s, u"spot"_s),
        logLine(u"spot"_s), u"while.end"_s});
    constexpr qsizetype enough = 60;
    bool isHalf = false;
    ASSERT_TRUE(eventually([&] {
        isHalf = !isHalf;
        xrandr({u"--output"_s, u"screen"_s, u"--mode"_s, isHalf ? u"half"_s : u"2560x900"_s});
        return logged().size() > enough;
    }));
    // In the middle of a change a search may see nothing, but never anything wrong; then all is as before.
    const QStringList meanwhile = logged();
    EXPECT_EQ(meanwhile.count(spot) + meanwhile.count(u"none"_s), meanwhile.size());
    EXPECT_TRUE(eventually([&] { return logged().lastIndexOf(spot) > meanwhile.size(); }));
    program().terminate();
    expectGoodEnd();
}

} // namespace plum
