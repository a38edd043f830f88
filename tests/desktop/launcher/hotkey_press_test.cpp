#include "desktop/support/launcher_desktop.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The hotkey, pressed by hand with a text typed at once after it.
class HotkeyPressTest : public LauncherDesktop, public testing::WithParamInterface<const char *>
{
protected:
    void SetUp() override { prepare(QString::fromLatin1(GetParam())); }

    // Leaves the launcher hidden, its keyword box empty and the probe with the keyboard.
    void hideLauncher()
    {
        if (isShown(u"frmSet/frmSet"_s)) {
            hands->key(u"alt+z"_s);
            ASSERT_TRUE(disappears(u"frmSet/frmSet"_s));
        }
        ASSERT_TRUE(eventually([&] { return view->isActive(probe->window()); }));
    }

    // Presses the hotkey and types, with the launcher hidden, and hides it again.
    void pressAndType(const QString &text)
    {
        hands->keyAndType(u"alt+z"_s, text);
        ASSERT_TRUE(shows(u"frmSet/Text8"_s, text)) << text.toStdString() << ", but "
            << textOf(u"frmSet/Text8"_s).toStdString();
        ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s)) << launcher().readAllStandardError().toStdString();
        clearEntry();
        ASSERT_TRUE(shows(u"frmSet/Text8"_s, {}));
        hideLauncher();
    }
};

} // namespace

TEST_P(HotkeyPressTest, whatIsTypedAtOnceArrivesWhereTheLauncherWasHidden)
{
    startLauncher();
    hideLauncher();
    probe->forget();
    const int turns = QByteArray(GetParam()) == "openbox" ? 500 : 100;
    for (int turn = 0; turn < turns && !HasFatalFailure(); ++turn)
        pressAndType(u"app%1"_s.arg(turn));
    EXPECT_EQ(probe->seen({u"text"_s}), QStringList());
}

INSTANTIATE_TEST_SUITE_P(EveryManager, HotkeyPressTest, everyManager, managerName);

} // namespace plum
