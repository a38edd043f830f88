#include "platform/linux/loaded_javascript.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class JavaScriptTest : public testing::Test
{
protected:
    // The value as text; "failed" when there is none.
    QString valueOf(const QString &program)
    {
        const auto result = javaScript.evaluate(program);
        return result.ok ? result.value : u"failed"_s;
    }

    plum::LoadedJavaScript javaScript;
};

} // namespace

TEST_F(JavaScriptTest, NumbersHaveAtMostFifteenDigits)
{
    EXPECT_EQ(valueOf(u"1+2"_s), u"3"_s);
    EXPECT_EQ(valueOf(u"-7.5"_s), u"-7.5"_s);
    EXPECT_EQ(valueOf(u"0.1+0.2"_s), u"0.3"_s);
    EXPECT_EQ(valueOf(u"1/3"_s), u"0.333333333333333"_s);
    EXPECT_EQ(valueOf(u"123456789012345"_s), u"123456789012345"_s);
    EXPECT_EQ(valueOf(u"1e15"_s), u"1E+15"_s);
    EXPECT_EQ(valueOf(u"1e300"_s), u"1E+300"_s);
    EXPECT_EQ(valueOf(u"0.0001"_s), u"0.0001"_s);
    EXPECT_EQ(valueOf(u"0.00001"_s), u"1E-05"_s);
    EXPECT_EQ(valueOf(u"-0"_s), u"0"_s);
    EXPECT_EQ(valueOf(u"1/0"_s), u"1.#INF"_s);
    EXPECT_EQ(valueOf(u"-1/0"_s), u"-1.#INF"_s);
    EXPECT_EQ(valueOf(u"0/0"_s), u"-1.#IND"_s);
}

TEST_F(JavaScriptTest, BooleansUndefinedAndNull)
{
    EXPECT_EQ(valueOf(u"1<2"_s), u"True"_s);
    EXPECT_EQ(valueOf(u"1>2"_s), u"False"_s);
    EXPECT_EQ(valueOf(u"undefined"_s), QString());
    EXPECT_EQ(valueOf(u"var a = 1;"_s), QString());
    EXPECT_EQ(valueOf(QString()), QString());
    EXPECT_EQ(valueOf(u"null"_s), u"failed"_s);
}

TEST_F(JavaScriptTest, TextAndObjects)
{
    EXPECT_EQ(valueOf(u"'你好 ' + 1"_s), u"你好 1"_s);
    EXPECT_EQ(valueOf(u"({a: 1})"_s), u"[object Object]"_s);
    EXPECT_EQ(valueOf(u"[1, [2, 3], 'x', null]"_s), u"1,2,3,x,"_s);
    EXPECT_EQ(valueOf(u"new Error('x')"_s), u"[object Error]"_s);
    EXPECT_EQ(valueOf(u"({toString: function() { return 'mine'; }})"_s), u"mine"_s);
    EXPECT_EQ(valueOf(u"'\\u0000x'.length"_s), u"2"_s);
}

TEST_F(JavaScriptTest, ErrorsFail)
{
    EXPECT_EQ(valueOf(u"this is no script"_s), u"failed"_s);
    EXPECT_EQ(valueOf(u"throw new Error('x')"_s), u"failed"_s);
    EXPECT_EQ(valueOf(u"throw 5"_s), u"failed"_s);
    EXPECT_EQ(valueOf(u"function f() { throw 'x'; } f();"_s), u"failed"_s);
    EXPECT_EQ(valueOf(u"missing()"_s), u"failed"_s);
    EXPECT_EQ(valueOf(u"({toString: function() { throw 'x'; }})"_s), u"failed"_s);
    EXPECT_TRUE(javaScript.evaluate(u"missing()"_s).value.contains(u"missing"_s));
}

TEST_F(JavaScriptTest, EndlessRecursionFails)
{
    EXPECT_EQ(valueOf(u"function f() { return f() + 1; } f();"_s), u"failed"_s);
    EXPECT_EQ(valueOf(u"1"_s), u"1"_s);
}

TEST_F(JavaScriptTest, EachEvaluationStartsAnew)
{
    EXPECT_EQ(valueOf(u"left = 1; Array.prototype.x = 2; left"_s), u"1"_s);
    EXPECT_EQ(valueOf(u"typeof left + typeof [].x"_s), u"undefinedundefined"_s);
}

TEST_F(JavaScriptTest, ScriptsHaveNoWayOut)
{
    EXPECT_EQ(
        valueOf(u"typeof Qt + typeof XMLHttpRequest + typeof require"_s), u"undefinedundefinedundefined"_s);
}

TEST_F(JavaScriptTest, TheLanguageIsThatOfTheDocument)
{
    EXPECT_EQ(valueOf(u"let f = (a) => `${a}${2 ** 3}`; class C { get x() { return f(1); } } new C().x"_s),
        u"18"_s);
    EXPECT_EQ(valueOf(u"typeof ActiveXObject + typeof Enumerator + typeof VBArray"_s),
        u"undefinedundefinedundefined"_s);
    static const QRegularExpression date(
        uR"(^(Thu Jan 1|Wed Dec 31) \d\d:\d\d:\d\d (1970|1969) GMT([+-]\d{4})?$)"_s);
    EXPECT_TRUE(date.match(valueOf(u"new Date(0)"_s)).hasMatch()) << valueOf(u"new Date(0)"_s).toStdString();
}

TEST_F(JavaScriptTest, TheInterfaceLivesAndTheEndOfTheProcessEndsTheScript)
{
    bool handled = false;
    QTimer::singleShot(20, [&handled] {
        handled = true;
        QCoreApplication::exit();
    });
    EXPECT_EQ(valueOf(u"while (true) ;"_s), u"failed"_s);
    EXPECT_TRUE(handled);
    // Entering the main loop anew takes the exit back.
    QTimer::singleShot(0, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
    EXPECT_EQ(valueOf(u"1"_s), u"1"_s);
}

TEST_F(JavaScriptTest, AnEvaluationInsideAnEvaluation)
{
    QString inner;
    QTimer::singleShot(0, [&] { inner = valueOf(u"'inner'"_s); });
    EXPECT_EQ(valueOf(u"var n = 0; while (n < 3000000) ++n; n"_s), u"3000000"_s);
    EXPECT_EQ(inner, u"inner"_s);
}
