#include "store/protocol/window_messages.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(WindowMessages, ALineComesBackAsItWas)
{
    const QString html = u"<p>\"a\"\n\\b\r\n\u4F60 \U0001F351</p>"_s;
    const QByteArray line = plum::toLine(plum::windowMessages::write, {{u"html"_s, html}});
    EXPECT_EQ(line.count('\n'), 1);
    EXPECT_TRUE(line.endsWith('\n'));
    const auto message = plum::fromLine(line);
    ASSERT_TRUE(message);
    EXPECT_EQ(message->verb, plum::windowMessages::write);
    EXPECT_EQ(message->fields.value("html"_L1).toString(), html);
}

TEST(WindowMessages, WhatIsNoMessageIsNone)
{
    for (const QByteArray line : {"", "text", "[1]", "{", "{\"verb\":1}", "{\"other\":\"x\"}"})
        EXPECT_FALSE(plum::fromLine(line)) << line.constData();
}
