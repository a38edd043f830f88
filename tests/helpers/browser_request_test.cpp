#include "helpers/browser/browser_request.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::BrowserRequest;

TEST(BrowserRequest, AnAddressWithATitle)
{
    const auto request = BrowserRequest::fromCommandLine(u"_tarnwick_url_|||http://h/p?a=1|||Title"_s);
    EXPECT_EQ(request.address, QUrl(u"http://h/p?a=1"_s));
    EXPECT_EQ(request.title, u"Title"_s);
}

TEST(BrowserRequest, AnAddressMayLackItsSchemeOrBeAFile)
{
    EXPECT_EQ(BrowserRequest::fromCommandLine(u"_tarnwick_url_|||example.com|||"_s).address,
        QUrl(u"http://example.com"_s));
    EXPECT_EQ(BrowserRequest::fromCommandLine(u"_tarnwick_url_|||\\tmp\\a.html|||"_s).address,
        QUrl(u"file:///tmp/a.html"_s));
}

TEST(BrowserRequest, HtmlWithAndWithoutAMarker)
{
    for (const QString &marker : {u"_tarnwick_html_|||"_s, QString()}) {
        const auto request = BrowserRequest::fromCommandLine(marker + u"<p>x</p>|||y"_s);
        EXPECT_EQ(request.html, u"<p>x</p>"_s);
        EXPECT_EQ(request.title, u"y"_s);
        EXPECT_TRUE(request.address.isEmpty());
    }
}

TEST(BrowserRequest, ThePageMayHoldSeparators)
{
    const auto request = BrowserRequest::fromCommandLine(u"_tarnwick_html_|||a|||b|||title"_s);
    EXPECT_EQ(request.html, u"a|||b"_s);
    EXPECT_EQ(request.title, u"title"_s);
}

TEST(BrowserRequest, WithoutASeparatorThereIsNoTitle)
{
    EXPECT_EQ(BrowserRequest::fromCommandLine(u"plain"_s).html, u"plain"_s);
    EXPECT_EQ(BrowserRequest::fromCommandLine(u"plain"_s).title, QString());
    EXPECT_EQ(BrowserRequest::fromCommandLine(QString()).html, QString());
}
