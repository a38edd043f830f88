#include "desktop/support/script_test.h"

#include <gmock/gmock.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class Ending : public ScriptTest<DesktopTest>
{
protected:
    void SetUp() override { startDesktop(u"openbox"_s); }
};

const QString waitLong = u"time.sleep \"600000\""_s;

} // namespace

TEST_F(Ending, ofAScriptReleasesAKeyThatItHeld)
{
    run({u"keyboard.key_down \"shift\""_s, u"keyboard.key_down \"a\""_s});
    EXPECT_TRUE(eventually([&] { return probe->seen({u"key up"_s}).size() == 2; }));
    EXPECT_TRUE(eventually([&] { return view->keysDown().empty(); }));
}

TEST_F(Ending, ofAScriptReleasesAButtonThatItHeld)
{
    run({u"mouse.move \"%1\""_s.arg(asText(inClient(100, 200))), u"mouse.l_down"_s, u"mouse.r_down"_s});
    EXPECT_TRUE(eventually([&] { return probe->seen({u"button up"_s}).size() == 2; }));
    EXPECT_TRUE(eventually([&] { return !view->anyButtonDown(); }));
}

TEST_F(Ending, byASignalReleasesKeysAndButtons)
{
    start({u"mouse.move \"%1\""_s.arg(asText(inClient(100, 200))), u"keyboard.key_down \"ctrl\""_s,
        u"mouse.l_down"_s, waitLong});
    ASSERT_TRUE(eventually([&] { return view->anyButtonDown() && view->keysDown().size() == 1; }));
    program().terminate();
    expectGoodEnd();
    EXPECT_TRUE(eventually([&] { return !view->anyButtonDown(); }));
    EXPECT_TRUE(eventually([&] { return view->keysDown().empty(); }));
}

TEST_F(Ending, leavesKeysAloneThatTheUserHolds)
{
    outputOf(u"xdotool"_s, {u"keydown"_s, u"shift"_s});
    ASSERT_EQ(view->keysDown().size(), 1U);
    run({u"keyboard.key \"a\""_s});
    EXPECT_EQ(view->keysDown().size(), 1U);
}

TEST_F(Ending, ofTheServerEndsTheProgramWithAClearLine)
{
    start({u"mouse.move \"10:10\""_s, waitLong});
    ASSERT_TRUE(eventually([&] { return view->pointer() == QPoint(10, 10); }));
    endServer();
    ASSERT_TRUE(program().waitForFinished(test::patience));
    EXPECT_EQ(program().exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program().exitCode(), 1);
    // Qt goes on in one of two sentences, whichever of its threads notices first.
    EXPECT_THAT(
        program().readAllStandardError().toStdString(), testing::HasSubstr("The X11 connection broke"));
}

TEST_F(Ending, ofTheServerAmidWindowCommandsEndsTheProgramToo)
{
    start({u"while.start \"count\",\"5000\""_s, u"window.get \"active_window\",\"h\""_s,
        u"window.get \"window_xy\",set.h,\"p\""_s, u"mouse.move set.p"_s, u"while.end"_s});
    ASSERT_TRUE(
        eventually([&] { return view->pointer() == view->frameRectangle(probe->window()).topLeft(); }));
    endServer();
    ASSERT_TRUE(program().waitForFinished(test::patience));
    EXPECT_EQ(program().exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program().exitCode(), 1);
    EXPECT_THAT(
        program().readAllStandardError().toStdString(), testing::HasSubstr("The X11 connection broke"));
}

} // namespace plum
