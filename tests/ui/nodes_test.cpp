#include "ui/frm_set_fixture.h"

#include "ui/editing/edit_panel.h"
#include "ui/editing/rename_panel.h"

#include <QAccessible>
#include <QLabel>
#include <QMenu>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::writeBytes;

namespace {

// What assistive technology is told, node by node.
class NodesTest : public FrmSetTest
{
protected:
    static QAccessibleInterface *nodeOf(QWidget *widget)
    {
        return QAccessible::queryAccessibleInterface(widget);
    }

    static void walk(QAccessibleInterface *node, const std::function<void(QAccessibleInterface *)> &visit)
    {
        visit(node);
        for (int i = 0; i < node->childCount(); ++i) {
            QAccessibleInterface *child = node->child(i);
            ASSERT_TRUE(child) << qPrintable(node->text(QAccessible::Name)) << " has no child " << i;
            walk(child, visit);
        }
    }

    static QAccessibleInterface *find(QAccessibleInterface *root, QAccessible::Role role, const QString &name)
    {
        QAccessibleInterface *found = nullptr;
        walk(root, [&](QAccessibleInterface *node) {
            if (node->role() == role && node->text(QAccessible::Name) == name)
                found = node;
        });
        return found;
    }

    static void expectNoEmptyNodes(QWidget *window)
    {
        walk(nodeOf(window), [&](QAccessibleInterface *node) {
            // Parts that Qt's own controls are made of.
            const bool isPart = node->state().invisible || node->role() == QAccessible::ScrollBar
                || node->role() == QAccessible::LayeredPane || node->role() == QAccessible::Client
                || node->role() == QAccessible::Separator;
            EXPECT_TRUE(isPart || !node->text(QAccessible::Name).isEmpty())
                << qPrintable(window->objectName()) << ": a node of role " << node->role()
                << " says nothing, "
                << (node->object() ? qPrintable(node->object()->objectName()) : "no object");
            EXPECT_FALSE(node->state().invisible && node->role() == QAccessible::Grouping)
                << qPrintable(window->objectName()) << ": a hidden panel is told of";
        });
    }
};

} // namespace

TEST_F(NodesTest, windowsAndDialogsAreCalledThat)
{
    start();
    EXPECT_EQ(nodeOf(ui.window())->role(), QAccessible::Window);
    EXPECT_EQ(nodeOf(ui.window())->text(QAccessible::Name), u"Plum"_s);
    ui.showTip(u"tip"_s);
    EXPECT_EQ(nodeOf(topLevel("shurubox"))->role(), QAccessible::Dialog);
    ui.window()->showKeys();
    EXPECT_EQ(nodeOf(topLevel("keysheet"))->role(), QAccessible::Dialog);
}

TEST_F(NodesTest, aRowHasTheKeywordAndTheGuide)
{
    folder.addApp(u"mail"_s, "//guide:Writes a letter\r\n");
    writeBytes(folder.configTxt(), "mail\r\n");
    start();
    QAccessibleInterface *list = find(nodeOf(ui.window()), QAccessible::List, u"All apps"_s);
    ASSERT_TRUE(list);
    ASSERT_EQ(list->childCount(), 1);
    QAccessibleInterface *row = list->child(0);
    EXPECT_EQ(row->role(), QAccessible::ListItem);
    EXPECT_EQ(row->text(QAccessible::Name), u"mail"_s);
    EXPECT_TRUE(waitUntil([&] { return row->text(QAccessible::Description) == u"Writes a letter"_s; }));
    EXPECT_EQ(row->parent(), list);
    EXPECT_EQ(list->indexOfChild(row), 0);
}

TEST_F(NodesTest, aRowCanBeRunAndEdited)
{
    addApps({u"one"_s, u"two"_s});
    start();
    QAccessibleInterface *list = find(nodeOf(ui.window()), QAccessible::List, u"All apps"_s);
    QAccessibleActionInterface *actions = list->child(1)->actionInterface();
    ASSERT_TRUE(actions);
    EXPECT_EQ(actions->actionNames().first(2), QStringList({u"run"_s, u"edit"_s}));
    actions->doAction(u"run"_s);
    EXPECT_TRUE(waitUntil([&] { return said() == QStringList(u"note two"_s); }));
    actions->doAction(u"edit"_s);
    EXPECT_TRUE(waitUntil([&] { return LauncherBench::find("addeditbox")->isVisible(); }));
}

TEST_F(NodesTest, aRowThatIsGoneSaysSo)
{
    addApps({u"one"_s, u"two"_s});
    start();
    type(text8(), u"o"_s);
    QAccessibleInterface *list = find(nodeOf(ui.window()), QAccessible::List, u"Apps that match"_s);
    ASSERT_TRUE(list);
    QAccessibleInterface *second = list->child(1);
    ASSERT_TRUE(second);
    type(text8(), u"n"_s);
    EXPECT_EQ(list->childCount(), 1);
    EXPECT_FALSE(second->isValid());
    EXPECT_TRUE(second->state().invalid);
    EXPECT_EQ(list->child(1), nullptr);
}

TEST_F(NodesTest, theSelectedRowThatHasTheKeyboardSaysSo)
{
    addApps({u"one"_s, u"two"_s});
    start();
    key(text8(), Qt::Key_Down);
    QAccessibleInterface *list = find(nodeOf(ui.window()), QAccessible::List, u"All apps"_s);
    EXPECT_TRUE(list->child(0)->state().selected);
    EXPECT_TRUE(list->child(0)->state().focused);
    EXPECT_FALSE(list->child(1)->state().selected);
    EXPECT_EQ(list->focusChild(), list->child(0));
}

TEST_F(NodesTest, noWindowHasEmptyOrHiddenNodes)
{
    addApps({u"one"_s});
    start();
    expectNoEmptyNodes(ui.window());
    ui.window()->editPanel().openForEditing(u"one"_s, u"x"_s);
    ui.window()->showEditPanel();
    expectNoEmptyNodes(ui.window());
    ui.window()->renamePanel().open(u"one"_s);
    ui.window()->showRenamePanel();
    expectNoEmptyNodes(ui.window());
    ui.window()->showMainPanel();
    ui.window()->showKeys();
    expectNoEmptyNodes(topLevel("keysheet"));
    ui.window()->showManual();
    expectNoEmptyNodes(topLevel("manual"));
    click(LauncherBench::find("menuimg"));
    expectNoEmptyNodes(topLevel("hotkey"));
    ui.showInput(u"Who?"_s, u"who"_s);
    expectNoEmptyNodes(topLevel("shurubox"));
    ui.showTip(u"tip"_s);
    expectNoEmptyNodes(topLevel("shurubox"));
    key(topLevel("shurubox"), Qt::Key_Escape);
    ui.askPackageName(u"one"_s);
    expectNoEmptyNodes(topLevel("shurubox"));
}

TEST_F(NodesTest, anOpenMenuStandsBelowTheWindow)
{
    start();
    EXPECT_FALSE(find(nodeOf(ui.window()), QAccessible::PopupMenu, u"Settings"_s));
    click(LauncherBench::find("Image6"));
    QAccessibleInterface *menu = find(nodeOf(ui.window()), QAccessible::PopupMenu, u"Settings"_s);
    ASSERT_TRUE(menu);
    EXPECT_TRUE(find(menu, QAccessible::MenuItem, u"New app"_s));
    topLevel("mmmm")->hide();
    EXPECT_FALSE(find(nodeOf(ui.window()), QAccessible::PopupMenu, u"Settings"_s));
}

} // namespace plum
