#include "helpers/store_window/plain_store_form.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
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

    PlainStoreForm form{QUrl(u"http://files.example/plum/download/"_s)};
    QSignalSpy outside{&form, &StoreForm::outsideOpened};
    QSignalSpy followed{&form, &StoreForm::packageFollowed};
};

TEST_F(PlainStore, SaysWhereThePagesOpen)
{
    EXPECT_TRUE(child<QLabel>(u"explanation"_s).text().contains(u"default browser"_s));
}

TEST_F(PlainStore, SaysThatTheStoreSignsNothingBesideItsOwnPagesAlone)
{
    const auto *line = form.findChild<QLabel *>(u"unsigned"_s);
    form.showAddress(QUrl(u"http://localhost/page"_s));
    EXPECT_TRUE(line->isHidden());
    form.tellUnsigned();
    EXPECT_FALSE(line->isHidden());
    EXPECT_EQ(form.windowTitle(), u"Plum"_s);
    form.writePage(u"<p>sent"_s);
    EXPECT_TRUE(line->isHidden());
    form.clearPage();
    EXPECT_FALSE(line->isHidden());
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

TEST_F(PlainStore, APageOfAnotherProgramOpensOnlyWhenItIsWanted)
{
    form.writePage(u"<!DOCTYPE html><h1>你好</h1>"_s);
    EXPECT_TRUE(outside.isEmpty());
    EXPECT_TRUE(child<QLabel>(u"explanation"_s).text().startsWith(u"Another program sent a page."_s));
    EXPECT_EQ(form.windowTitle(), u"A page from another program"_s);

    child<QPushButton>(u"again"_s).click();
    ASSERT_EQ(outside.size(), 1);
    QFile file(outside[0][0].toUrl().toLocalFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray page = file.readAll();
    EXPECT_TRUE(page.startsWith("\xEF\xBB\xBF<!DOCTYPE html><meta http-equiv=\"Content-Security-Policy\""))
        << page.constData();
    EXPECT_TRUE(page.contains("default-src 'none'"));
    EXPECT_TRUE(page.endsWith(u"<h1>你好</h1>"_s.toUtf8()));
    EXPECT_TRUE(file.remove());
}

TEST_F(PlainStore, AStorePageAfterItIsTheStoresAgain)
{
    form.writePage(u"sent"_s);
    form.showAddress(QUrl(u"http://store.example/"_s));
    ASSERT_EQ(outside.size(), 1);
    EXPECT_EQ(outside[0][0].toUrl(), QUrl(u"http://store.example/"_s));
    EXPECT_EQ(form.windowTitle(), u"Plum"_s);
    EXPECT_TRUE(child<QLabel>(u"explanation"_s).text().contains(u"pages of the store"_s));
}

TEST_F(PlainStore, ADownloadWithoutASpeedLeavesItOut)
{
    form.show();
    form.setProgress({{u"percent"_s, 100}, {u"total"_s, u"25 bytes"_s}, {u"done"_s, u"25 bytes"_s}});
    EXPECT_EQ(child<QLabel>(u"sizes"_s).text(), u"25 bytes of 25 bytes"_s);
    form.setProgress(
        {{u"percent"_s, 50}, {u"total"_s, u"2 KB"_s}, {u"done"_s, u"1 KB"_s}, {u"speed"_s, u"512 bytes"_s}});
    EXPECT_EQ(child<QLabel>(u"sizes"_s).text(), u"1 KB of 2 KB, 512 bytes a second"_s);
}

TEST_F(PlainStore, AReopenedWindowDoesNotShowADownloadThatIsOver)
{
    const QJsonObject whole{{u"percent"_s, 100}, {u"total"_s, u"2 KB"_s}, {u"done"_s, u"2 KB"_s}};
    form.show();
    form.setProgress(whole);
    EXPECT_TRUE(child<QWidget>(u"weia"_s).isVisible());
    form.hide();
    form.show();
    EXPECT_FALSE(child<QWidget>(u"weia"_s).isVisible());
    form.hide();
    form.setProgress(whole); // its end, while nobody looks
    form.show();
    EXPECT_FALSE(child<QWidget>(u"weia"_s).isVisible());
}

TEST_F(PlainStore, ANewDownloadForgetsTheOneBefore)
{
    form.show();
    form.setProgress({{u"percent"_s, 100}, {u"total"_s, u"2 KB"_s}, {u"done"_s, u"2 KB"_s}});
    form.forgetProgress();
    EXPECT_FALSE(child<QWidget>(u"weia"_s).isVisible());
    EXPECT_EQ(child<QProgressBar>(u"bar"_s).value(), 0);
    EXPECT_EQ(child<QLabel>(u"sizes"_s).text(), QString());
}

TEST_F(PlainStore, InstalledAppsSaySoAndAreOfferedAnew)
{
    QSignalSpy anew(&form, &StoreForm::anewRequested);
    auto &button = child<QPushButton>(u"installed"_s);
    form.show();
    EXPECT_FALSE(button.isVisible());
    form.setApps({QJsonObject{{u"keyword"_s, u"a&b"_s}},
        QJsonObject{{u"keyword"_s, u"notes"_s}, {u"version"_s, u"1.0"_s}, {u"newest"_s, u"1.2"_s}}});
    EXPECT_TRUE(button.isVisible());
    const QList<QAction *> items = button.menu()->actions();
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[0]->text(), u"a&&b is installed: Reinstall"_s);
    EXPECT_EQ(items[1]->text(), u"notes 1.0 is installed: Update to 1.2"_s);
    items[1]->trigger();
    ASSERT_EQ(anew.size(), 1);
    EXPECT_EQ(anew[0][0].toString(), u"notes"_s);
    form.setApps({});
    EXPECT_FALSE(button.isVisible());
}

TEST_F(PlainStore, WhatWasNotInstalledCanBeTriedAgain)
{
    QSignalSpy retry(&form, &StoreForm::retryRequested);
    form.show();
    form.setProgress({{u"percent"_s, 40}, {u"total"_s, u"2 KB"_s}, {u"done"_s, u"1 KB"_s}});
    form.setFailed(u"notes"_s);
    EXPECT_EQ(child<QLabel>(u"percent"_s).text(), u"notes was not installed"_s);
    EXPECT_EQ(child<QLabel>(u"sizes"_s).text(), QString());
    EXPECT_EQ(child<QProgressBar>(u"bar"_s).value(), 0);
    form.hide();
    form.bringUp();
    EXPECT_TRUE(child<QPushButton>(u"tryagain"_s).isVisible());
    child<QPushButton>(u"tryagain"_s).click();
    EXPECT_EQ(retry.size(), 1);
    form.setFailed({});
    EXPECT_FALSE(child<QPushButton>(u"tryagain"_s).isVisible());
}

TEST_F(PlainStore, NoTextMakesItWiderThanASmallScreen)
{
    constexpr int narrow = 400; // logical pixels: 800 at a factor of 2
    form.setCaption(u"获取远程文件信息..."_s, u"getting information on the file"_s);
    form.setApps({QJsonObject{{u"keyword"_s, u"notes"_s}}});
    form.setProgress({{u"percent"_s, 40}, {u"total"_s, u"1023.99 MB"_s}, {u"done"_s, u"1001.25 MB"_s},
        {u"speed"_s, u"1001.25 KB"_s}});
    EXPECT_LE(child<QWidget>(u"wei"_s).minimumSizeHint().width(), narrow);
    EXPECT_LE(child<QWidget>(u"weia"_s).minimumSizeHint().width(), narrow);
    form.setFailed(QString(200, u'w'));
    EXPECT_LE(child<QWidget>(u"weia"_s).minimumSizeHint().width(), narrow);
}

TEST_F(PlainStore, TheBarSaysWhatATitleMeansAndTheTitleStays)
{
    form.setCaption(u"发送请求..."_s, u"sending the request"_s);
    EXPECT_EQ(form.windowTitle(), u"发送请求..."_s);
    EXPECT_EQ(child<QLabel>(u"caption"_s).text(), u"发送请求... (sending the request)"_s);
    form.setCaption({});
    EXPECT_EQ(child<QLabel>(u"caption"_s).text(), u"Plum"_s);
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
