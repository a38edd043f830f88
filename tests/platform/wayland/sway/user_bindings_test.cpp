#include "platform/wayland/sway/user_bindings.h"

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

TEST(UserBindings, areFoundWhateverTheOrderAndTheNamesOfTheirKeys)
{
    const QString configuration = u"output * bg black solid_color\n"
                                  "    bindsym --release Shift+Alt+X exec foot\n"
                                  "bindsym Control+m kill\n"_s;
    EXPECT_TRUE(bindsKeys(configuration, u"Mod1+Shift+x"_s));
    EXPECT_TRUE(bindsKeys(configuration, u"Ctrl+m"_s));
    EXPECT_FALSE(bindsKeys(configuration, u"Mod1+x"_s));
    EXPECT_FALSE(bindsKeys(configuration, u"m"_s));
    EXPECT_FALSE(bindsKeys(configuration, u"Ctrl+Shift+m"_s));
}

TEST(UserBindings, mayNameTheirKeysByVariables)
{
    const QString configuration = u"set $mod Mod1\nset $menu z\nbindsym $mod+$menu exec menu\n"_s;
    EXPECT_TRUE(bindsKeys(configuration, u"Mod1+z"_s));
    EXPECT_FALSE(bindsKeys(configuration, u"Mod1+x"_s));
}

TEST(UserBindings, areNotMadeByOtherLines)
{
    EXPECT_FALSE(bindsKeys(
        u"# bindsym Mod1+z exec menu\nexec bindsym Mod1+z\nbindsym\nbindsym --release\n\n"_s, u"Mod1+z"_s));
    EXPECT_FALSE(bindsKeys(QString(), u"Mod1+z"_s));
}

} // namespace plum
