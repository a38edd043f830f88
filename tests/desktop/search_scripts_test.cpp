#include "desktop/support/search_test.h"

#include <tuple>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

enum class Target { Picture, Colour };

constexpr QRect window{100, 60, 320, 252};

// Where the screen is composed from pictures of the windows and where it is drawn by the windows.
const auto bothWays = testing::Values("openbox", "xfwm4_compositing");

class SearchOnManager : public SearchTest
{
protected:
    void startWithPicture(const char *manager)
    {
        startDesktop(QString::fromLatin1(manager));
        ASSERT_TRUE(eventually(
            [&] { return view->isComposited() == (manager == std::string_view("xfwm4_compositing")); }));
        showPicture(window);
    }
};

class SearchScripts : public SearchOnManager,
                      public testing::WithParamInterface<std::tuple<const char *, Target>>
{
protected:
    void SetUp() override { startWithPicture(std::get<0>(GetParam())); }

    // The line that searches.
    QString find(const QString &region, const QString &offset, const QString &action) const
    {
        return std::get<1>(GetParam()) == Target::Picture ? findPart(region, offset, action)
                                                          : findMark(region, offset, action);
    }

    // Where the target is on the screen.
    QPoint place()
    {
        return onScreen(std::get<1>(GetParam()) == Target::Picture ? part.topLeft() : firstMark);
    }

    // A region that begins neither at the screen's corner nor at the target.
    QString around() { return asRegion({onScreen({-31, -17}), QSize(120, 90)}); }

    static QString event(const QString &what, QPoint at)
    {
        return u"%1 %2 %3"_s.arg(what).arg(at.x()).arg(at.y());
    }
};

INSTANTIATE_TEST_SUITE_P(Under, SearchScripts,
    testing::Combine(bothWays, testing::Values(Target::Picture, Target::Colour)), [](const auto &search) {
        return std::string(std::get<0>(search.param))
            + (std::get<1>(search.param) == Target::Picture ? "_picture" : "_colour");
    });

class SearchManagers : public SearchOnManager, public testing::WithParamInterface<const char *>
{
protected:
    void SetUp() override { startWithPicture(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(Under, SearchManagers, bothWays, managerName);

class SearchScaled : public SearchTest, public testing::WithParamInterface<const char *>
{
protected:
    void SetUp() override
    {
        qputenv("QT_SCALE_FACTOR", GetParam());
        startDesktop(u"openbox"_s);
        showPicture(window);
    }

    void TearDown() override
    {
        qunsetenv("QT_SCALE_FACTOR");
        SearchTest::TearDown();
    }

    static double factor() { return QByteArray(GetParam()).toDouble(); }
};

INSTANTIATE_TEST_SUITE_P(By, SearchScaled, testing::Values("1.5", "2"),
    [](const auto &scale) { return scale.param == std::string_view("2") ? "200" : "150"; });

} // namespace

TEST_P(SearchScripts, clickOnTheFoundPixel)
{
    run({find(around(), u""_s, u"click"_s)});
    ASSERT_TRUE(painter->sees(event(u"button up 1"_s, place())));
    EXPECT_EQ(painter->seen({u"button"_s}),
        (QStringList{event(u"button down 1"_s, place()), event(u"button up 1"_s, place())}));
}

TEST_P(SearchScripts, doubleClickBesideTheFoundPixelByTheOffset)
{
    const QPoint beside = place() + QPoint(5, -7);
    run({find(u""_s, u"5:-7"_s, u"d_click"_s)});
    EXPECT_TRUE(painter->sees(event(u"double click 1"_s, beside)));
    EXPECT_TRUE(eventually([&] { return painter->seen({u"button up"_s}).size() == 2; }));
    EXPECT_EQ(view->pointer(), beside);
}

TEST_P(SearchScripts, rightClickWhereThePointerIs)
{
    const QPoint elsewhere = onScreen({120, 80});
    run({u"mouse.move \"%1\""_s.arg(asText(elsewhere)), find(u""_s, u"5:5"_s, u"r_click"_s)});
    ASSERT_TRUE(painter->sees(event(u"button up 3"_s, elsewhere)));
    EXPECT_EQ(painter->seen({u"button"_s}),
        (QStringList{event(u"button down 3"_s, elsewhere), event(u"button up 3"_s, elsewhere)}));
}

TEST_P(SearchScripts, moveToTheFoundPixel)
{
    run({find(around(), u""_s, u"move"_s)});
    EXPECT_EQ(view->pointer(), place());
    run({find(around(), u"5:5"_s, u"move"_s)});
    EXPECT_EQ(view->pointer(), place() + QPoint(5, 5));
    EXPECT_EQ(painter->seen({u"button"_s}), QStringList());
}

TEST_P(SearchScripts, storeTheFoundPixel)
{
    const QPoint pointer = view->pointer();
    run({find(u""_s, u""_s, u"get_xy"_s), logLine(u"tarnwick_xy"_s), find(u""_s, u""_s, u"get_x"_s),
        logLine(u"tarnwick_xy"_s), find(around(), u""_s, u"get_y"_s), logLine(u"tarnwick_xy"_s),
        find(around(), u"-4:9"_s, u"spot"_s), logLine(u"spot"_s), find(u""_s, u"1:2"_s, u"set_clipboard"_s)});
    EXPECT_EQ(logged(),
        (QStringList{asText(place()), QString::number(place().x()), QString::number(place().y()),
            asText(place() + QPoint(-4, 9))}));
    const QByteArray copied = asText(place() + QPoint(1, 2)).toLatin1();
    EXPECT_TRUE(eventually([&] { return clipboardText() == copied; })) << clipboardText().toStdString();
    EXPECT_EQ(view->pointer(), pointer);
}

TEST_P(SearchScripts, doNothingWhereTheTargetIsNotInTheRegion)
{
    const QPoint pointer = view->pointer();
    const QString outside = asRegion({onScreen({60, 0}), QSize(120, 90)});
    run({u"set.spot \"none\""_s, find(outside, u""_s, u"spot"_s), logLine(u"spot"_s),
        find(outside, u""_s, u"click"_s)});
    EXPECT_EQ(logged(), QStringList{u"none"_s});
    EXPECT_EQ(view->pointer(), pointer);
    EXPECT_EQ(painter->seen({u"button"_s}), QStringList());
}

TEST_P(SearchManagers, findTheFirstPixelOfAColourInTheRegion)
{
    run({findMark(asRegion({onScreen({0, firstMark.y() + 1}), QSize(60, 28)}), u""_s, u"move"_s)});
    EXPECT_EQ(view->pointer(), onScreen(secondMark));
}

TEST_P(SearchManagers, reportAMissingPictureAndGoOn)
{
    start({u"os.find_pic \"%1/missing.bmp\",\"\",\"\",\"move\""_s.arg(folder()),
        findPart(u""_s, u""_s, u"spot"_s), logLine(u"spot"_s)});
    ASSERT_TRUE(eventually([&] { return view->windowTitled("ERR : Wrong !") != XCB_NONE; }));
    const xcb_window_t box = view->windowTitled("ERR : Wrong !");
    if (!view->isActive(box))
        view->activate(box);
    ASSERT_TRUE(eventually([&] { return view->isActive(box) && !view->classWithKeyboard().isEmpty(); }));
    EXPECT_EQ(logged(), QStringList());
    outputOf(u"xdotool"_s, {u"key"_s, u"Return"_s});
    ASSERT_TRUE(eventually([&] { return !view->exists(box); }));
    expectGoodEnd();
    EXPECT_EQ(logged(), QStringList{asText(onScreen(part.topLeft()))});
}

TEST_P(SearchScaled, speaksOfPhysicalPixels)
{
    // The window's program is scaled too; its picture is not.
    ASSERT_EQ(view->clientRectangle(painter->window()).size(), (QSizeF(window.size()) * factor()).toSize());

    run({findPart(u""_s, u""_s, u"spot"_s), logLine(u"spot"_s), findPart(u""_s, u"3:4"_s, u"move"_s)});
    EXPECT_EQ(logged(), QStringList{asText(onScreen(part.topLeft()))});
    EXPECT_EQ(view->pointer(), onScreen(part.topLeft()) + QPoint(3, 4));

    run({findMark(asRegion({onScreen({-10, -10}), QSize(100, 60)}), u""_s, u"click"_s)});
    EXPECT_EQ(view->pointer(), onScreen(firstMark));
    ASSERT_TRUE(eventually([&] { return painter->seen({u"button up 1"_s}).size() == 1; }));
    // The program counts in its own, larger units.
    const QStringList words = painter->seen({u"button down 1"_s}).value(0).split(u' ');
    const QPointF clicked(words.value(3).toDouble(), words.value(4).toDouble());
    EXPECT_NEAR(clicked.x(), onScreen(firstMark).x() / factor(), 1);
    EXPECT_NEAR(clicked.y(), onScreen(firstMark).y() / factor(), 1);
}

} // namespace plum
