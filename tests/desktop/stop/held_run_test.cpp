// A run that an editor holds, and a hand that stops it all the same.

#include "desktop/stop/nested_desktop.h"
#include "desktop/support/conditions.h"
#include "support/debug_talk.h"

#include <QFile>
#include <QJsonArray>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class HeldRunTest : public NestedDesktop
{
};

} // namespace

TEST_F(HeldRunTest, escapeHeldStopsARunThatIsHeld)
{
    const QString script = folder() + u"/held.wf"_s;
    QFile file(script);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("keyboard.key_down \"shift\"\r\nmouse.l_down\r\nset.a \"1\"\r\n");
    file.close();
    start(program(), u"plumkit"_s, {u"debug"_s});
    test::DebugTalk editor(program());
    ASSERT_EQ(editor.ask(u"initialize"_s)[u"success"_s], true);
    ASSERT_EQ(editor.ask(u"launch"_s, {{u"program"_s, script}})[u"success"_s], true);
    ASSERT_EQ(editor.ask(u"setBreakpoints"_s,
                  {{u"source"_s, QJsonObject{{u"path"_s, script}}},
                      {u"breakpoints"_s, QJsonArray{QJsonObject{{u"line"_s, 3}}}}})[u"success"_s],
        true);
    ASSERT_EQ(editor.ask(u"configurationDone"_s)[u"success"_s], true);
    ASSERT_EQ(editor.event(u"stopped"_s)[u"body"_s][u"reason"_s], u"breakpoint"_s);
    EXPECT_TRUE(eventually([this] { return isAnythingDown(); }));

    hand->keyDown(u"Escape"_s);
    EXPECT_EQ(editor.event(u"exited"_s)[u"body"_s][u"exitCode"_s], 130);
    hand->keyUp(u"Escape"_s);
    EXPECT_TRUE(eventually([this] { return !isAnythingDown(); }));
    EXPECT_EQ(editor.ask(u"disconnect"_s)[u"success"_s], true);
    EXPECT_EQ(status(), 0);
}

} // namespace plum
