#include "platform/x11/connection/x11_connection.h"
#include "support/x_server.h"

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

TEST(XServer, takesConnectionsOnADisplayOfItsOwn)
{
    const XServer one({640, 480});
    const XServer two({800, 600});
    ASSERT_TRUE(one.isReady());
    ASSERT_TRUE(two.isReady());
    EXPECT_NE(one.display(), two.display());
    one.useAsDisplay();
    const X11Connection connection;
    ASSERT_TRUE(connection.isOpen());
    EXPECT_EQ(connection.screen()->width_in_pixels, 640);
    EXPECT_EQ(connection.screen()->height_in_pixels, 480);
}

TEST(XServer, isNotReadyWithoutTheWindowManagerItWasAskedFor)
{
    const XServer server({640, 480}, {u"no-such-window-manager"_s});
    EXPECT_FALSE(server.isReady());
}

TEST(XServer, waitsForItsWindowManager)
{
    const XServer server({640, 480}, {u"openbox"_s});
    ASSERT_TRUE(server.isReady());
    server.useAsDisplay();
    X11Connection connection;
    const auto check = connection.reply(xcb_get_property_reply, xcb_get_property, 0, connection.root(),
        connection.atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW, 0, 1);
    ASSERT_TRUE(check);
    EXPECT_EQ(check->type, XCB_ATOM_WINDOW);
}

} // namespace plum
