#include "desktop/support/launcher_desktop.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The page of the last run, from the launcher's menu to what the desktop opens.
class WhatHappenedTest : public LauncherDesktop
{
protected:
    QString opensPage()
    {
        click(u"frmSet/Image6"_s);
        EXPECT_TRUE(appears(u"mmmm/mmmm"_s));
        const qsizetype before = opened().size();
        click(u"mmmm/whathappened"_s);
        EXPECT_TRUE(eventually([&] { return opened().size() > before; }));
        QFile page(opened().value(before));
        EXPECT_TRUE(page.open(QIODevice::ReadOnly)) << opened().value(before).toStdString();
        return QString::fromUtf8(page.readAll());
    }
};

} // namespace

TEST_F(WhatHappenedTest, opensAPageThatShowsTheRunThatFailed)
{
    writeApp(u"broken"_s, {u"//edition:2"_s, u"mouse.move 33:44"_s, u"set.a set.nowhere"_s});
    write(u"config/load/config.txt"_s, "broken\r\n");
    write(u"config/load/options.ini"_s, "[recorder]\r\npictures=on\r\n");
    startLauncher();
    hands->type(u"broken"_s);
    ASSERT_TRUE(shows(u"frmSet/Text8"_s, u"broken"_s));
    hands->key(u"Return"_s);
    ASSERT_TRUE(eventually([&] {
        return isShown(u"message/message"_s)
            && textOf(u"message/message"_s).contains("nowhere was never set"_L1);
    }));
    click(u"message/OK"_s);
    ASSERT_TRUE(disappears(u"message/message"_s));
    const QString page = opensPage();
    for (const char *shown : {"What happened: broken", "pointer to 33:44", "set.a set.nowhere",
             "nowhere was never set", "<img alt=\"before\"", "src=\"data:image/png;base64,"})
        EXPECT_TRUE(page.contains(QLatin1StringView(shown))) << shown;
    EXPECT_FALSE(page.contains("<script"_L1));
}

} // namespace plum
