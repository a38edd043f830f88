#include "store/download_texts.h"
#include "store/store_process.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(StoreProcess, WithoutItsProgramNothingHappens)
{
    plum::StoreProcess view({.program = u"/nowhere/plum-store-window"_s, .downloadBase = {}});
    int closed = 0;
    QObject::connect(&view, &plum::StoreView::closeRequested, &view, [&closed] { ++closed; });
    EXPECT_FALSE(view.isAvailable());
    view.navigate(QUrl(u"http://shop.test/"_s));
    view.showWindow();
    view.setCaption(u"text"_s);
    view.hideWindow();
    EXPECT_EQ(view.processId(), 0);
    EXPECT_EQ(closed, 0);
}

TEST(DownloadTexts, everyTitleIsSaidInEnglishToo)
{
    for (const plum::DownloadText &text : plum::downloadTexts) {
        const bool isEnglish = text.title.front().unicode() < 0x80;
        EXPECT_NE(plum::meaningOf(text.title).isEmpty(), !isEnglish) << qPrintable(text.title.toString());
    }
    EXPECT_EQ(plum::meaningOf(u"something else"), QString());
}

TEST(StoreProcess, NothingStartsBeforeAPageIsShown)
{
    plum::StoreProcess view({.program = QCoreApplication::applicationFilePath(), .downloadBase = {}});
    ASSERT_TRUE(view.isAvailable());
    view.setBrowserWidth(300);
    view.layOut();
    view.setLoadingVisible(true);
    view.clearPage();
    view.setCaption(u"text"_s);
    view.hideWindow();
    EXPECT_EQ(view.processId(), 0);
}
