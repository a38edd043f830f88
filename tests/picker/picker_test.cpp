#include "picker/picker.h"

#include "picker/picked_picture.h"
#include "platform/recording/recording_platform.h"
#include "search/picture_file.h"

#include <QKeyEvent>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// A plain desktop with a chequered patch and two windows.
class PickerTest : public testing::Test
{
protected:
    PickerTest()
    {
        platform.screen().size = {100, 80};
        platform.screen().pixels.assign(100 * 80, 0x102030);
        for (int row = 40; row < 50; ++row) {
            for (int column = 60; column < 75; ++column)
                platform.screen().pixels[std::size_t(row * 100 + column)]
                    = (column + row) % 3 ? 0xff0000 : 0x00ff00;
        }
        recording::RecordingWindows &windows = platform.windows();
        windows.titles = {{u"Notes"_s, 7}, {u"Above"_s, 8}};
        windows.rectangles = {{7, {10, 10, 60, 50}}, {8, {50, 30, 40, 40}}};
        windows.order = {8, 7};
        auto seen = DesktopView::take(platform.screen(), platform.windows());
        EXPECT_TRUE(seen);
        view = *seen;
    }

    // A picker whose answers are written down.
    std::unique_ptr<Picker> picker(Picker::Wish wish = {})
    {
        auto made = std::make_unique<Picker>(view, wish);
        QObject::connect(made.get(), &Picker::pointTaken, made.get(),
            [this, wish](
                const PickedPoint &point, PickedLine line) { taken += linesFor(line, point, wish.edition); });
        QObject::connect(made.get(), &Picker::rectangleTaken, made.get(), [this](const QRect &part) {
            taken += u"%1,%2 %3x%4"_s.arg(part.x()).arg(part.y()).arg(part.width()).arg(part.height());
        });
        QObject::connect(made.get(), &Picker::givenUp, made.get(), [this] { taken += u"given up"_s; });
        return made;
    }

    static void press(Picker &picker, int key, Qt::KeyboardModifiers modifiers = {})
    {
        EXPECT_TRUE(picker.takesKey(QKeyEvent(QEvent::KeyPress, key, modifiers)));
    }

    recording::RecordingPlatform platform;
    DesktopView view;
    QStringList taken;
};

} // namespace

TEST_F(PickerTest, arrowsGoAPixelAndWithShiftTen)
{
    const auto made = picker();
    made->moveTo({20, 20});
    press(*made, Qt::Key_Right);
    press(*made, Qt::Key_Down, Qt::ShiftModifier);
    press(*made, Qt::Key_Left, Qt::ShiftModifier);
    press(*made, Qt::Key_Up);
    EXPECT_EQ(made->point(), QPoint(11, 29));
    press(*made, Qt::Key_Left, Qt::ShiftModifier);
    press(*made, Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(made->point(), QPoint(0, 29)) << "the mark stays on the desktop";
}

TEST_F(PickerTest, enterWritesTheLineThatIsAskedFor)
{
    const auto made = picker();
    made->moveTo({60, 40});
    press(*made, Qt::Key_Return);
    EXPECT_EQ(taken, QStringList(u"mouse.move 60:40"_s));
    taken.clear();
    const auto colour = picker();
    colour->moveTo({60, 40});
    press(*colour, Qt::Key_Tab);
    press(*colour, Qt::Key_Return);
    EXPECT_EQ(taken, QStringList(u"os.find_color FF0000,,,move"_s));
    taken.clear();
    const auto window = picker({PickedLine::Window, Edition::One});
    window->moveTo({60, 40});
    press(*window, Qt::Key_Return);
    EXPECT_EQ(taken, QStringList({u"mouse.move \"60:40\""_s, u"window.get \"mouse_window\",\"window\""_s}));
}

TEST_F(PickerTest, escGivesUpAndNothingFollows)
{
    const auto made = picker();
    press(*made, Qt::Key_Escape);
    press(*made, Qt::Key_Return);
    EXPECT_EQ(taken, QStringList(u"given up"_s));
}

TEST_F(PickerTest, spaceSetsACornerAndEnterTakesTheRectangle)
{
    const auto made = picker();
    made->moveTo({40, 30});
    press(*made, Qt::Key_Space);
    made->moveTo({31, 39});
    press(*made, Qt::Key_Return);
    EXPECT_EQ(taken, QStringList(u"31,30 10x10"_s));
}

TEST_F(PickerTest, aPictureIsTwoCornersByEnterAlone)
{
    const auto made = picker({PickedLine::Picture, Edition::Two});
    made->moveTo({40, 30});
    press(*made, Qt::Key_Return);
    EXPECT_TRUE(taken.isEmpty());
    press(*made, Qt::Key_Right);
    press(*made, Qt::Key_Return);
    EXPECT_EQ(taken, QStringList(u"40,30 2x1"_s));
}

TEST_F(PickerTest, aDragTakesARectangleAndAClickThePoint)
{
    const auto dragged = picker();
    dragged->press({5, 5});
    dragged->moveTo({20, 20});
    dragged->release({24, 14});
    const auto clicked = picker();
    clicked->press({5, 5});
    clicked->release({6, 6});
    EXPECT_EQ(taken, QStringList({u"5,5 20x10"_s, u"mouse.move 6:6"_s}));
}

TEST_F(PickerTest, twoClicksAreTheCornersOfAPictureThatIsAskedFor)
{
    const auto made = picker({PickedLine::Picture, Edition::Two});
    made->press({5, 5});
    made->release({5, 5});
    EXPECT_TRUE(taken.isEmpty());
    made->press({14, 24});
    made->release({14, 24});
    EXPECT_EQ(taken, QStringList(u"5,5 10x20"_s));
}

TEST_F(PickerTest, aClickIsTheOtherCornerToOneThatWasSet)
{
    const auto made = picker();
    made->moveTo({5, 5});
    press(*made, Qt::Key_Space);
    made->press({14, 24});
    made->release({14, 24});
    EXPECT_EQ(taken, QStringList(u"5,5 10x20"_s));
}

TEST_F(PickerTest, aSetCornerCanBeTakenBack)
{
    const auto made = picker();
    made->moveTo({5, 5});
    press(*made, Qt::Key_Space);
    made->moveTo({30, 30});
    press(*made, Qt::Key_Space);
    EXPECT_FALSE(made->rectangle());
    press(*made, Qt::Key_Return);
    EXPECT_EQ(taken, QStringList(u"mouse.move 30:30"_s));
}

TEST_F(PickerTest, theFactsAreThoseOfTheUppermostWindow)
{
    EXPECT_EQ(factsOf(pointIn(view, {60, 40})),
        QStringList({u"Point 60:40"_s, u"Colour FF0000"_s, u"Window \"Above\", handle 8"_s,
            u"Its corner 50:30, from there 10:10"_s}));
    EXPECT_EQ(factsOf(pointIn(view, {20, 20})).at(2), u"Window \"Notes\", handle 7"_s);
    EXPECT_EQ(
        factsOf(pointIn(view, {0, 0})), QStringList({u"Point 0:0"_s, u"Colour 102030"_s, u"No window"_s}));
}

TEST_F(PickerTest, whatEnterDoesIsSaid)
{
    const auto made = picker();
    made->moveTo({60, 40});
    EXPECT_TRUE(made->note().contains(u"Enter writes mouse.move 60:40"_s)) << made->note().toStdString();
    press(*made, Qt::Key_Space);
    EXPECT_TRUE(made->note().contains(u"Enter takes a picture of 1 x 1 pixels"_s))
        << made->note().toStdString();
}

TEST_F(PickerTest, aPictureIsANewFileAndIsTriedAtOnce)
{
    const QTemporaryDir folder;
    const PickedPicture first = savePicture(view, {58, 38, 19, 14}, folder.path());
    const PickedPicture second = savePicture(view, {58, 38, 19, 14}, folder.path());
    EXPECT_EQ(first.fileName, u"picture1.png"_s);
    EXPECT_EQ(second.fileName, u"picture2.png"_s);
    const auto picture = readPicture(folder.filePath(first.fileName));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 19);
    EXPECT_EQ(picture->height, 14);
    EXPECT_EQ(picture->at(0, 0), 0x102030U);
    EXPECT_EQ(picture->at(2, 2), 0xff0000U);
    EXPECT_EQ(first.report.at(0),
        u"The search compares 104 pixels of the 19 x 14 from 2:2; red may be off by 88, green by 221, blue does not count."_s);
    EXPECT_EQ(first.report.at(1), u"It is found once on this screen."_s);
}

TEST_F(PickerTest, aPictureOfOneColourIsSaidToBeOfNoUse)
{
    const QTemporaryDir folder;
    const PickedPicture plain = savePicture(view, {0, 0, 12, 9}, folder.path());
    ASSERT_EQ(plain.report.size(), 1);
    EXPECT_TRUE(plain.report.at(0).startsWith(u"Nothing of it is left"_s))
        << plain.report.at(0).toStdString();
}

// What the system blends over the others is picked, as it is seen, but no search for a picture sees it.
TEST_F(PickerTest, aPictureOfALayeredWindowIsSaidNotToBeFound)
{
    platform.screen().plainPixels.assign(100 * 80, 0x102030);
    view = DesktopView::take(platform.screen(), platform.windows()).value();
    const QTemporaryDir folder;
    const PickedPicture picked = savePicture(view, {58, 38, 19, 14}, folder.path());
    EXPECT_EQ(picked.report.at(1), u"It is not found on the main screen."_s);
}

TEST_F(PickerTest, withoutADesktopThereIsNothingToSee)
{
    platform.screen().size = {};
    EXPECT_FALSE(DesktopView::take(platform.screen(), platform.windows()));
}

TEST_F(PickerTest, aFolderThatTakesNothingIsNamed)
{
    const PickedPicture none = savePicture(view, {0, 0, 12, 9}, u"/no/such/folder"_s);
    EXPECT_EQ(none.fileName, QString());
    EXPECT_EQ(none.report, QStringList(u"The picture cannot be written into /no/such/folder."_s));
}

} // namespace plum
