#include "helpers/store_window/plain_store_form.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

class PlainStore : public testing::Test
{
protected:
    template <typename Widget> Widget &child(const QString &name)
    {
        auto *found = form.findChild<Widget *>(name);
        EXPECT_NE(found, nullptr);
        return *found;
    }

    PlainStoreForm form{QUrl(u"http://files.example/plum/download/"_s), false};
    QSignalSpy outside{&form, &StoreForm::outsideOpened};
    QSignalSpy followed{&form, &StoreForm::packageFollowed};
};

TEST_F(PlainStore, SaysWhereThePagesOpen)
{
    EXPECT_TRUE(child<QLabel>(u"explanation"_s).text().contains(u"default browser"_s));
}

TEST_F(PlainStore, OpensAPageOutsideAndOnceMoreWhenAsked)
{
    const QUrl page(u"http://store.example/plum/workflow_in/?v=0.01"_s);
    form.showAddress(page);
    child<QPushButton>(u"again"_s).click();
    ASSERT_EQ(outside.size(), 2);
    EXPECT_EQ(outside[0][0].toUrl(), page);
    EXPECT_EQ(outside[1][0].toUrl(), page);
}

TEST_F(PlainStore, OpensAWrittenPageAsAFileThatStays)
{
    form.writePage(u"<h1>你好</h1>"_s);
    ASSERT_EQ(outside.size(), 1);
    QFile file(outside[0][0].toUrl().toLocalFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("\xEF\xBB\xBF") + u"<h1>你好</h1>"_s.toUtf8());
    EXPECT_TRUE(file.remove());
}

TEST_F(PlainStore, EnterInTheNameFollowsThePackageOfThatName)
{
    auto &name = child<QLineEdit>(u"packageName"_s);
    name.setText(u"note 50%#"_s);
    QTest::keyClick(&name, Qt::Key_Return);
    ASSERT_EQ(followed.size(), 1);
    EXPECT_EQ(followed[0][0].toUrl().toString(QUrl::FullyEncoded),
        u"http://files.example/plum/download/note%2050%25%23.wfp"_s);
}

TEST_F(PlainStore, ANameThatIsNoneInstallsNothing)
{
    auto &name = child<QLineEdit>(u"packageName"_s);
    for (const QString &text : {u""_s, u".."_s, u"a/b"_s}) {
        name.setText(text);
        EXPECT_FALSE(child<QPushButton>(u"install"_s).isEnabled());
        QTest::keyClick(&name, Qt::Key_Return);
    }
    EXPECT_TRUE(followed.isEmpty());
}

TEST_F(PlainStore, TheButtonInstallsToo)
{
    child<QLineEdit>(u"packageName"_s).setText(u"calc"_s);
    child<QPushButton>(u"install"_s).click();
    ASSERT_EQ(followed.size(), 1);
    EXPECT_EQ(followed[0][0].toUrl(), QUrl(u"http://files.example/plum/download/calc.wfp"_s));
}

} // namespace
