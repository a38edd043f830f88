#include "check/script_check.h"
#include "engine/run_time_error.h"
#include "recording/script_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

// All that the checker says of a line.
QString messagesOf(const QByteArray &line)
{
    const ScriptCheck check(recording::ScriptBench().system.vocabulary());
    QString messages;
    for (const Finding &finding : check.check(line + "\r\n"))
        messages += finding.message + u'\n';
    return messages;
}

// What a run says when it ends at that line.
QString reportOf(const QByteArray &line)
{
    recording::ScriptBench bench;
    try {
        bench.eventsOf(QString::fromUtf8(line));
    } catch (const RunTimeError &error) {
        return error.description();
    }
    return {};
}

} // namespace

TEST(ErrorWords, areTheSameBeforeARunAndWhenItFails)
{
    const QString milliseconds = errorWords(ErrorCause::NotMilliseconds, u"abc"_s);
    EXPECT_TRUE(messagesOf("time.sleep \"abc\"").contains(milliseconds));
    const QString number = errorWords(ErrorCause::NotANumber, u"few"_s);
    const QByteArray counted = "text.replace \"v\",\"a\",\"b\",\"c\",\"few\",\"\",\"\"";
    EXPECT_TRUE(messagesOf(counted).contains(number)) << qPrintable(messagesOf(counted));
    EXPECT_TRUE(reportOf(counted).contains(number)) << qPrintable(reportOf(counted));
}

TEST(ErrorWords, nameTheCulpritAsItIsWritten)
{
    EXPECT_TRUE(messagesOf("mouse.move \"a:b\"").contains(u"\"a:b\" is not a point, x:y"_s));
    EXPECT_TRUE(messagesOf("mouse.move \"99999:1\"").contains(u"99999 is out of range, -32768 to 32767"_s));
}
