#include "platform/choice/desktop_choice.h"
#include "platform/linux/compositor_offer.h"
#include "platform/platform.h"
#include "platform/screen.h"
#include "support/headless_kwin.h"
#include "support/sway_session.h"
#include "support/x_server.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class DesktopChoice : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const char *variable :
            {"DISPLAY", "WAYLAND_DISPLAY", "SWAYSOCK", "PLUM_PLATFORM", "QT_QPA_PLATFORM"})
            qunsetenv(variable);
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    }

    // Whether a library whose name begins so is in this process.
    static bool isLoaded(const char *library)
    {
        QFile maps(u"/proc/self/maps"_s);
        EXPECT_TRUE(maps.open(QIODevice::ReadOnly));
        return maps.readAll().contains('/' + QByteArray(library));
    }
};

} // namespace

TEST_F(DesktopChoice, isX11WithoutAnySession)
{
    EXPECT_EQ(chosenDesktop(), DesktopKind::X11);
    qputenv("WAYLAND_DISPLAY", "/nonexistent");
    EXPECT_EQ(chosenDesktop(), DesktopKind::X11);
    EXPECT_TRUE(compositorOffer().empty());
}

TEST_F(DesktopChoice, isWaylandInASessionThatOffersEverything)
{
    const SwaySession session;
    ASSERT_TRUE(session.isReady());
    session.useAsDesktop();
    qunsetenv("QT_QPA_PLATFORM");
    EXPECT_EQ(chosenDesktop(), DesktopKind::Wayland);
    EXPECT_FALSE(isLoaded("libwayland-client"));

    qputenv("QT_QPA_PLATFORM", "xcb"); // Qt's windows would be there
    EXPECT_EQ(chosenDesktop(), DesktopKind::X11);
}

TEST_F(DesktopChoice, isWaylandWhereKWinTrustsTheProgram)
{
    {
        const HeadlessKWin stranger({u"/usr/bin/env"_s});
        ASSERT_TRUE(stranger.isReady());
        stranger.useAsDesktop();
        qunsetenv("QT_QPA_PLATFORM");
        EXPECT_FALSE(compositorOffer().empty());
        EXPECT_EQ(chosenDesktop(), DesktopKind::X11);
    }
    const HeadlessKWin session({QFileInfo(u"/proc/self/exe"_s).symLinkTarget()});
    ASSERT_TRUE(session.isReady());
    session.useAsDesktop();
    qunsetenv("QT_QPA_PLATFORM");
    EXPECT_EQ(familyOf(compositorOffer()), CompositorFamily::KWin);
    EXPECT_EQ(chosenDesktop(), DesktopKind::Wayland);
    EXPECT_FALSE(isLoaded("libwayland-client"));
}

TEST_F(DesktopChoice, isTheUsers)
{
    const SwaySession session;
    ASSERT_TRUE(session.isReady());
    session.useAsDesktop();
    qputenv("PLUM_PLATFORM", "x11");
    EXPECT_EQ(chosenDesktop(), DesktopKind::X11);
    qputenv("PLUM_PLATFORM", "wayland");
    qputenv("QT_QPA_PLATFORM", "xcb");
    EXPECT_EQ(chosenDesktop(), DesktopKind::Wayland);
}

TEST_F(DesktopChoice, bringsNothingOfX11IntoAProcessOnWayland)
{
    const SwaySession session({u"output HEADLESS-1 resolution 1024x600"_s});
    ASSERT_TRUE(session.isReady());
    session.useAsDesktop();
    qunsetenv("QT_QPA_PLATFORM");
    EXPECT_TRUE(prepareEnvironment(true).hasDesktop);
    EXPECT_EQ(qgetenv("QT_QPA_PLATFORM"), "wayland;xcb");
    const auto platform = createPlatform(u"/tmp/plum"_s);
    EXPECT_EQ(platform->screen().mainScreenSize(), QSize(1024, 600));
    EXPECT_TRUE(isLoaded("libwayland-client"));
    for (const char *library : {"plum-x11", "libxcb-xtest", "libxcb-shm", "libxcb-randr", "libxkbcommon-x11"})
        EXPECT_FALSE(isLoaded(library)) << library;
}

TEST_F(DesktopChoice, bringsNothingOfWaylandIntoAProcessOnX11)
{
    const XServer server({1024, 600});
    ASSERT_TRUE(server.isReady());
    server.useAsDisplay();
    EXPECT_TRUE(prepareEnvironment(true).hasDesktop);
    EXPECT_EQ(qgetenv("QT_QPA_PLATFORM"), "xcb");
    const auto platform = createPlatform(u"/tmp/plum"_s);
    EXPECT_EQ(platform->screen().mainScreenSize(), QSize(1024, 600));
    EXPECT_TRUE(isLoaded("libxcb-xtest"));
    for (const char *library : {"plum-wayland", "libwayland-client"})
        EXPECT_FALSE(isLoaded(library)) << library;
}

TEST_F(DesktopChoice, saysWhatIsMissing)
{
    EXPECT_EQ(prepareEnvironment(true).notice, u"There is no X server: DISPLAY is not set.");
    qputenv("PLUM_PLATFORM", "wayland");
    EXPECT_EQ(
        prepareEnvironment(true).notice, u"There is no Wayland compositor: WAYLAND_DISPLAY is not set.");
    qputenv("WAYLAND_DISPLAY", "/nonexistent");
    const StartEnvironment start = prepareEnvironment(true);
    EXPECT_FALSE(start.hasDesktop);
    EXPECT_EQ(start.notice, u"The Wayland compositor of WAYLAND_DISPLAY=/nonexistent does not answer.");
}

} // namespace plum
