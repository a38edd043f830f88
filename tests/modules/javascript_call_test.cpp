// A script's call of a function, on the engine that it runs on.

#include "commands/javascript_call.h"
#include "platform/linux/loaded_javascript.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(JavaScriptCall, ALineCommentHidesTheRest)
{
    plum::LoadedJavaScript javaScript;
    EXPECT_EQ(plum::EvalJs(javaScript, u"function f() { return 1; }\r\n// note\r\n"_s, u"f"_s, QString()),
        QString());
    EXPECT_EQ(
        plum::EvalJs(javaScript, u"5; // note\r\nfunction f() { return 1; }"_s, u"f"_s, QString()), u"5"_s);
    EXPECT_EQ(
        plum::EvalJs(javaScript, u"function f(p) { return p; }\r\n/* note */\r\n"_s, u"f"_s, u"'a\\b'"_s),
        u"a/b"_s);
}
