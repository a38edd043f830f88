#include "picker/pick_window.h"

#include "picker/picker.h"
#include "platform/recording/recording_platform.h"

#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The picker over a screen whose every pixel has a colour of its own, under keys and a mouse.
class PickWindowTest : public testing::Test
{
protected:
    PickWindowTest()
        : screen(QGuiApplication::primaryScreen()->geometry().size())
    {
        platform.screen().size = screen;
        for (int row = 0; row < screen.height(); ++row) {
            for (int column = 0; column < screen.width(); ++column)
                platform.screen().pixels.push_back(colourOf({column, row}));
        }
        picker.emplace(DesktopView::take(platform.screen(), platform.windows()).value(), Picker::Wish{});
        QObject::connect(
            &*picker, &Picker::pointTaken, &*picker, [this](const PickedPoint &point, PickedLine line) {
                taken += linesFor(line, point, Edition::Two);
            });
        QObject::connect(
            &*picker, &Picker::rectangleTaken, &*picker, [this](const QRect &part) { rectangle = part; });
        QObject::connect(&*picker, &Picker::givenUp, &*picker, [this] { taken += u"given up"_s; });
        picker->start({100, 100});
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *shown = qobject_cast<PickWindow *>(widget); shown && shown->isVisible())
                window = shown;
        }
        EXPECT_TRUE(window && QTest::qWaitForWindowExposed(window, 60000));
    }

    static QRgb colourOf(QPoint point)
    {
        return qRgb(point.x() % 256, point.y() % 256, point.x() / 256 * 16 + point.y() / 256);
    }

    QString note() { return window->findChild<QLabel *>(u"pickNote"_s)->text(); }
    QWidget *magnifier() { return window->findChild<QWidget *>(u"magnifier"_s); }
    QWidget *card() { return window->findChild<QWidget *>(u"pickCard"_s); }

    QSize screen;
    recording::RecordingPlatform platform;
    std::optional<Picker> picker;
    PickWindow *window = nullptr;
    QStringList taken;
    QRect rectangle;
};

} // namespace

TEST_F(PickWindowTest, keysAloneReachEverything)
{
    QTest::keyClick(window, Qt::Key_Right);
    QTest::keyClick(window, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_TRUE(note().contains(u"Point 101:110"_s)) << note().toStdString();
    EXPECT_TRUE(note().contains(u"Enter writes mouse.move 101:110"_s)) << note().toStdString();
    QTest::keyClick(window, Qt::Key_Tab);
    EXPECT_TRUE(note().contains(u"Enter writes os.find_color 656E00,,,move"_s)) << note().toStdString();
    QTest::keyClick(window, Qt::Key_Return);
    EXPECT_EQ(taken, QStringList(u"os.find_color 656E00,,,move"_s));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(PickWindowTest, escLeaves)
{
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(taken, QStringList(u"given up"_s));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(PickWindowTest, toCloseItIsToGiveUp)
{
    window->close();
    EXPECT_EQ(taken, QStringList(u"given up"_s));
}

TEST_F(PickWindowTest, theMouseTakesAPoint)
{
    QTest::mouseMove(window, {37, 41});
    EXPECT_TRUE(note().contains(u"Point 37:41"_s)) << note().toStdString();
    QTest::mouseClick(window, Qt::LeftButton, {}, {38, 42});
    EXPECT_EQ(taken, QStringList(u"mouse.move 38:42"_s));
}

TEST_F(PickWindowTest, theMouseDrawsARectangle)
{
    QTest::mousePress(window, Qt::LeftButton, {}, {30, 40});
    QTest::mouseMove(window, {60, 50});
    EXPECT_TRUE(note().contains(u"Enter takes a picture of 31 x 11 pixels"_s)) << note().toStdString();
    QTest::mouseRelease(window, Qt::LeftButton, {}, {49, 59});
    EXPECT_EQ(rectangle, QRect(30, 40, 20, 20));
    EXPECT_TRUE(taken.isEmpty());
}

TEST_F(PickWindowTest, theOtherButtonGivesUp)
{
    QTest::mouseClick(window, Qt::RightButton, {}, {38, 42});
    EXPECT_EQ(taken, QStringList(u"given up"_s));
}

TEST_F(PickWindowTest, thePixelsAroundTheMarkAreMagnified)
{
    QTest::keyClick(window, Qt::Key_Right);
    const QImage seen = magnifier()->grab().toImage();
    const int tile = seen.width() / 21;
    const auto tileAt = [&](int column, int row) {
        return seen.pixel(column * tile + tile / 2, row * tile + tile / 2) & 0xffffff;
    };
    EXPECT_EQ(tileAt(10, 5), colourOf({101, 100}) & 0xffffff);
    EXPECT_EQ(tileAt(0, 0), colourOf({91, 95}) & 0xffffff);
    EXPECT_EQ(tileAt(20, 10), colourOf({111, 105}) & 0xffffff);
}

TEST_F(PickWindowTest, offTheDesktopThereIsBlack)
{
    picker->moveTo({0, 0});
    const QImage seen = magnifier()->grab().toImage();
    EXPECT_EQ(seen.pixel(5, 5) & 0xffffff, 0U);
}

TEST_F(PickWindowTest, theCardNeverCoversTheMark)
{
    const QRect whole(QPoint(), screen);
    for (const QPoint point :
        {whole.topLeft(), whole.topRight(), whole.bottomLeft(), whole.bottomRight(), whole.center()}) {
        picker->moveTo(point);
        EXPECT_FALSE(card()->geometry().contains(point)) << point.x() << ":" << point.y();
        EXPECT_TRUE(whole.contains(card()->geometry())) << point.x() << ":" << point.y();
    }
}

// A screen reader reads the name of what has the keyboard.
TEST_F(PickWindowTest, whatIsThereIsTheNameOfTheWindow)
{
    QTest::keyClick(window, Qt::Key_Right);
    EXPECT_TRUE(window->accessibleName().contains(u"Point 101:100"_s));
    EXPECT_TRUE(window->accessibleName().contains(u"Colour 656400"_s));
}

TEST_F(PickWindowTest, aLongTitleLeavesTheCardOnTheScreen)
{
    platform.windows().titles = {{QString(3000, u'W'), 7}};
    platform.windows().rectangles = {{7, {0, 0, 200, 200}}};
    platform.windows().order = {7};
    Picker other(DesktopView::take(platform.screen(), platform.windows()).value(), Picker::Wish{});
    PickWindow shown(other, *QGuiApplication::primaryScreen());
    other.moveTo({100, 100});
    shown.showChange();
    EXPECT_LT(shown.findChild<QWidget *>(u"pickCard"_s)->geometry().right(), screen.width());
}

namespace {

// A screen of which a unit of Qt's is more than a pixel.
class FineScreen final : public Screen
{
public:
    FineScreen(Screen &pixels, qreal unit)
        : m_pixels(pixels)
        , m_unit(unit)
    {
    }
    QSize mainScreenSize() override { return m_pixels.mainScreenSize(); }
    QRect desktop() override { return m_pixels.desktop(); }
    Capture capture(const QRect &region) override { return m_pixels.capture(region); }
    qreal pixelsOfUnit(const QRect &, qreal) override { return m_unit; }

private:
    Screen &m_pixels;
    qreal m_unit;
};

} // namespace

// A mouse stands on pixels of the screen, which are no whole ones of the window.
TEST(ScaledPickWindowTest, theMouseReachesEveryPixel)
{
    for (const qreal unit : {1.5, 2.0}) {
        recording::RecordingPlatform platform;
        const QSize pixels = (QSizeF(QGuiApplication::primaryScreen()->geometry().size()) * unit).toSize();
        platform.screen().size = pixels;
        platform.screen().pixels.resize(std::size_t(pixels.width()) * std::size_t(pixels.height()));
        FineScreen screen(platform.screen(), unit);
        Picker picker(DesktopView::take(screen, platform.windows()).value(), Picker::Wish{});
        picker.start({100, 100});
        PickWindow *window = nullptr;
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *shown = qobject_cast<PickWindow *>(widget); shown && shown->isVisible())
                window = shown;
        }
        ASSERT_TRUE(window);
        for (const QPoint point : {QPoint(401, 311), QPoint(402, 310), QPoint(0, 0),
                 QPoint(pixels.width() - 1, pixels.height() - 1)}) {
            const QPointF place = QPointF(point) / unit;
            QMouseEvent move(QEvent::MouseMove, place.toPoint(), place, window->mapToGlobal(place),
                Qt::NoButton, Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(window, &move);
            EXPECT_EQ(picker.point(), point) << unit;
        }
        picker.giveUp();
    }
}

} // namespace plum
