#include "contract/contract_test.h"

#include "platform/javascript.h"
#include "platform/text_codec.h"

#include <QTimer>

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

class TextCodecPort : public ContractTest
{
protected:
    TextCodec &codec() { return platform->textCodec(); }
};

class JavaScriptPort : public ContractTest
{
protected:
    QString valueOf(const QString &program)
    {
        const JavaScript::Result result = platform->javaScript().evaluate(program);
        EXPECT_TRUE(result.ok) << result.value.toStdString();
        return result.value;
    }
};

} // namespace

TEST_F(TextCodecPort, keepsAsciiInTheSystemsEncoding)
{
    const QString text = u"plain text, 100%\r\n\t~"_s;
    EXPECT_EQ(codec().toSystem(text), text.toLatin1());
    EXPECT_EQ(codec().fromSystem(text.toLatin1()), text);
    EXPECT_EQ(codec().fromSystem(QByteArray()), QString());
    EXPECT_EQ(codec().toSystem(QString()), QByteArray());
}

TEST_F(TextCodecPort, givesBackWhatTheSystemsEncodingHas)
{
    for (const QString &text : {u"中文"_s, u"é"_s, u"€"_s, u"я"_s, u"日本"_s, u"\U0001F600"_s}) {
        const QByteArray bytes = codec().toSystem(text);
        EXPECT_EQ(codec().fromSystem(bytes), bytes.contains('?') ? QString::fromLatin1(bytes) : text);
    }
}

TEST_F(TextCodecPort, writesAQuestionMarkForWhatTheEncodingLacks)
{
    EXPECT_EQ(codec().toSystem(u"a"_s + QChar(0xD800) + u'b'), "a?b");
}

TEST_F(TextCodecPort, leavesTheMarkOfUtf8OutOfTheText)
{
    EXPECT_EQ(codec().fromSystem("\xEF\xBB\xBF"
                                 "a"),
        u"a");
    EXPECT_EQ(codec().fromUtf8("\xEF\xBB\xBF"
                               "a"),
        u"a");
}

TEST_F(TextCodecPort, readsUtf8WithAMarkAsTheSystemsText)
{
    EXPECT_EQ(codec().fromSystem("\xEF\xBB\xBF\xE4\xB8\xAD\xE6\x96\x87"), u"中文");
}

TEST_F(TextCodecPort, readsUtf8)
{
    EXPECT_EQ(codec().fromUtf8("caf\xC3\xA9 \xE4\xB8\xAD\xF0\x9F\x98\x80"), u"café 中\U0001F600");
    EXPECT_EQ(codec().fromUtf8(QByteArray()), QString());
    const QString broken = codec().fromUtf8("a\xFF"
                                            "b");
    EXPECT_EQ(broken, u"a\uFFFDb");
}

TEST_F(TextCodecPort, readsGb2312WithTheExtensionsOfGbk)
{
    EXPECT_EQ(codec().fromGb2312("\xD6\xD0\xCE\xC4 abc"), u"中文 abc");
    EXPECT_EQ(codec().fromGb2312("\xE9\x46"), u"镕"); // in GBK alone
    EXPECT_EQ(codec().fromGb2312("\xA1\xA4\xA1\xAA"), u"·—");
    EXPECT_EQ(codec().fromGb2312(QByteArray()), QString());
}

TEST_F(TextCodecPort, survivesBytesThatAreNoGb2312)
{
    const QString text = codec().fromGb2312("a\xD6");
    EXPECT_TRUE(text.startsWith(u'a'));
    EXPECT_LE(text.size(), 2);
}

TEST_F(JavaScriptPort, givesTheValueOfTheLastExpression)
{
    EXPECT_EQ(valueOf(u"1+2"_s), u"3");
    EXPECT_EQ(valueOf(u"var a = 'x'; function f(p) { return p + a; }\r\nf('y');"_s), u"yx");
    EXPECT_EQ(valueOf(u"1; 2; 'last'"_s), u"last");
    EXPECT_EQ(valueOf(u"var a = 1;"_s), QString());
    EXPECT_EQ(valueOf(QString()), QString());
}

TEST_F(JavaScriptPort, writesValuesAsTheSystemDoes)
{
    EXPECT_EQ(valueOf(u"'你好 ' + 1"_s), u"你好 1");
    EXPECT_EQ(valueOf(u"-7.5"_s), u"-7.5");
    EXPECT_EQ(valueOf(u"0.1+0.2"_s), u"0.3");
    EXPECT_EQ(valueOf(u"1/3"_s), u"0.333333333333333");
    EXPECT_EQ(valueOf(u"123456789012345"_s), u"123456789012345");
    EXPECT_EQ(valueOf(u"0.0001"_s), u"0.0001");
    EXPECT_EQ(valueOf(u"1<2"_s), u"True");
    EXPECT_EQ(valueOf(u"1>2"_s), u"False");
    EXPECT_EQ(valueOf(u"undefined"_s), QString());
    EXPECT_EQ(valueOf(u"[1, [2, 3], 'x', null]"_s), u"1,2,3,x,");
    EXPECT_EQ(valueOf(u"'\\u0000x'.length"_s), u"2");
}

TEST_F(JavaScriptPort, writesVeryLargeAndSmallNumbersInPowersOfTen)
{
    EXPECT_EQ(valueOf(u"1e15"_s), u"1E+15");
    EXPECT_EQ(valueOf(u"1e300"_s), u"1E+300");
    EXPECT_EQ(valueOf(u"0.00001"_s), u"1E-05");
}

TEST_F(JavaScriptPort, writesWhatIsNoNumber)
{
    EXPECT_EQ(valueOf(u"1/0"_s), u"1.#INF");
    EXPECT_EQ(valueOf(u"-1/0"_s), u"-1.#INF");
    EXPECT_EQ(valueOf(u"0/0"_s), u"-1.#IND");
}

TEST_F(JavaScriptPort, writesObjects)
{
    EXPECT_EQ(valueOf(u"({a: 1})"_s), u"[object Object]");
    EXPECT_EQ(valueOf(u"({toString: function() { return 'mine'; }})"_s), u"mine");
}

TEST_F(JavaScriptPort, failsWithTheErrorsText)
{
    for (const QString &program : {u"this is no script"_s, u"throw new Error('x')"_s, u"throw 5"_s,
             u"missing()"_s, u"null"_s, u"function f() { return f() + 1; } f();"_s}) {
        const JavaScript::Result result = platform->javaScript().evaluate(program);
        EXPECT_FALSE(result.ok) << program.toStdString() << ": " << result.value.toStdString();
    }
    EXPECT_FALSE(platform->javaScript().evaluate(u"missing()"_s).value.isEmpty());
    EXPECT_EQ(valueOf(u"1"_s), u"1");
}

TEST_F(JavaScriptPort, startsEachEvaluationAnew)
{
    EXPECT_EQ(valueOf(u"left = 1; Array.prototype.x = 2; left"_s), u"1");
    EXPECT_EQ(valueOf(u"typeof left + typeof [].x"_s), u"undefinedundefined");
}

TEST_F(JavaScriptPort, letsTheInterfaceLive)
{
    int ticks = 0;
    QTimer ticking;
    QObject::connect(&ticking, &QTimer::timeout, [&] { ++ticks; });
    ticking.start(5);
    EXPECT_EQ(valueOf(u"var end = new Date().getTime() + 400; while (new Date().getTime() < end) ; 'done'"_s),
        u"done");
    EXPECT_GE(ticks, 5);
}

TEST_F(JavaScriptPort, isGivenUpWhenTheProcessEnds)
{
    // In a process of its own: an engine that cannot be interrupted leaves the script behind until its end.
    const auto program = start({u"endless"_s});
    EXPECT_TRUE(waitUntil([&] { return program->hasEnded(); }));
    EXPECT_EQ(program->answer(u"evaluated"_s), u"no");
}

} // namespace plum::contract
