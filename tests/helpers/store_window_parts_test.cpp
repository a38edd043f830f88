#include "helpers/store_window/load_failure.h"
#include "helpers/store_window/user_acts.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

// A widget with one inside, as a browser has it, and one beside.
class UserActsTest : public testing::Test
{
protected:
    UserActsTest()
    {
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(browser);
        layout->addWidget(beside);
        auto *inner = new QVBoxLayout(browser);
        inner->addWidget(page);
        window.show();
    }

    QWidget window;
    QWidget *browser = new QWidget;
    QWidget *page = new QWidget;
    QLineEdit *beside = new QLineEdit;
    UserActs acts{[this] { return browser; }};
};

} // namespace

TEST_F(UserActsTest, AClickIsGoodForOneThing)
{
    EXPECT_FALSE(acts.take());
    QTest::mouseClick(page, Qt::LeftButton);
    EXPECT_TRUE(acts.take());
    EXPECT_FALSE(acts.take());
    QTest::mouseClick(page, Qt::MiddleButton);
    EXPECT_TRUE(acts.take());
}

TEST_F(UserActsTest, TheReleaseOfAClickThatWasUsedGivesNoSecondThing)
{
    QTest::mousePress(page, Qt::LeftButton);
    EXPECT_TRUE(acts.take());
    QTest::mouseRelease(page, Qt::LeftButton);
    EXPECT_FALSE(acts.take());
}

TEST_F(UserActsTest, AConfirmingKeyIsGoodForOneThingAndOthersAreNot)
{
    QTest::keyClick(page, Qt::Key_Return);
    EXPECT_TRUE(acts.take());
    QTest::keyClick(page, Qt::Key_Space);
    EXPECT_TRUE(acts.take());
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_Tab, Qt::Key_Escape, Qt::Key_Down})
        QTest::keyClick(page, key);
    EXPECT_FALSE(acts.take());
}

TEST_F(UserActsTest, WhatAProgramSendsIsNoAct)
{
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(2, 2), page->mapToGlobal(QPointF(2, 2)),
        Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(page, &press);
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(page, &key);
    EXPECT_FALSE(acts.take());
}

TEST_F(UserActsTest, ActsOnOtherWidgetsAreNone)
{
    QTest::mouseClick(beside, Qt::LeftButton);
    QTest::keyClick(beside, Qt::Key_Return);
    EXPECT_FALSE(acts.take());
}

TEST_F(UserActsTest, AnActCanBeForgotten)
{
    QTest::mouseClick(page, Qt::LeftButton);
    acts.forget();
    EXPECT_FALSE(acts.take());
}

TEST(LoadFailure, EveryFailureIsASentenceWithoutTheEnginesWords)
{
    using Info = QWebEngineLoadingInfo;
    const std::tuple<Info::ErrorDomain, int, QString> failures[] = {
        {Info::ConnectionErrorDomain, -102, u"The store does not answer."_s},
        {Info::ConnectionErrorDomain, -101, u"The store does not answer."_s},
        {Info::ConnectionErrorDomain, -118, u"The store takes too long to answer."_s},
        {Info::InternalErrorDomain, -7, u"The store takes too long to answer."_s},
        {Info::ConnectionErrorDomain, -106, u"This computer is not connected to a network."_s},
        {Info::ConnectionErrorDomain, -105,
            u"The store was not found. Is this computer connected to the network?"_s},
        {Info::DnsErrorDomain, -803,
            u"The store was not found. Is this computer connected to the network?"_s},
        {Info::CertificateErrorDomain, -202, u"The store cannot prove that it is the one it says it is."_s},
        {Info::HttpStatusCodeDomain, 404, u"The store has no such page."_s},
        {Info::HttpStatusCodeDomain, 503, u"The store has a problem of its own. Try again a little later."_s},
        {Info::HttpStatusCodeDomain, 403, u"The store does not give this page away."_s},
        {Info::HttpErrorDomain, -324, u"The store's answer is no page that can be shown."_s},
    };
    for (const auto &[domain, code, sentence] : failures)
        EXPECT_EQ(loadFailureText(domain, code), sentence) << code;
    EXPECT_TRUE(loadFailureText(Info::InternalErrorDomain, -3).isEmpty()); // broken off
}
