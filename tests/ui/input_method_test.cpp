#include "ui/frm_set_fixture.h"

#include <QInputMethodEvent>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Texts that are composed before they are there, and that are written from the right.
class InputMethodTest : public FrmSetTest
{
protected:
    ~InputMethodTest() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

    void compose(const QString &shown, const QString &committed = {})
    {
        QInputMethodEvent event(shown, {});
        event.setCommitString(committed);
        QApplication::sendEvent(text8(), &event);
    }
};

} // namespace

TEST_F(InputMethodTest, whatIsBeingComposedFiltersNothingBeforeItIsThere)
{
    addApps({u"你好"_s, u"nihao"_s});
    start();
    compose(u"ni"_s);
    EXPECT_EQ(typed(), QString());
    EXPECT_TRUE(inFront("List"));
    compose(u"nihao"_s);
    compose({}, u"你"_s);
    EXPECT_EQ(typed(), u"你"_s);
    EXPECT_EQ(listed("List2"), QStringList(u"你好"_s));
    key(text8(), Qt::Key_Return);
    EXPECT_EQ(said(), QStringList(u"note 你好"_s));
}

TEST_F(InputMethodTest, fromTheRightTheKeysMeanTheSame)
{
    QApplication::setLayoutDirection(Qt::RightToLeft);
    addApps({u"שלום"_s, u"shalom"_s});
    start();
    type(text8(), u"שלו"_s);
    EXPECT_EQ(listed("List2"), QStringList(u"שלום"_s));
    key(text8(), Qt::Key_Down);
    EXPECT_FALSE(keywordBoxHasFocus());
    key(find("List2"), Qt::Key_Left);
    EXPECT_TRUE(keywordBoxHasFocus());
    key(text8(), Qt::Key_Down);
    key(find("List"), Qt::Key_Escape);
    find<KeywordList>("List2")->clearSelection();
    key(text8(), Qt::Key_Return);
    EXPECT_EQ(said(), QStringList(u"note שלום"_s));
}

} // namespace plum
