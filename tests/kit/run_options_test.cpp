#include "kit/run_options.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum::kit;

namespace {

QString problemWith(const QStringList &arguments)
{
    QString problem;
    readRunOptions(arguments, problem);
    return problem;
}

} // namespace

TEST(RunOptions, MayStandOnBothSidesOfTheFile)
{
    QString problem;
    const RunOptions options = readRunOptions(
        {u"--timeout"_s, u"2.5"_s, u"a.wf"_s, u"--set"_s, u"who=Ann=Bob"_s, u"--set"_s, u"n="_s}, problem);
    EXPECT_EQ(problem, QString());
    EXPECT_EQ(options.file, u"a.wf"_s);
    EXPECT_EQ(options.timeout, 2.5);
    EXPECT_EQ(
        options.variables, (QList<std::pair<QString, QString>>{{u"who"_s, u"Ann=Bob"_s}, {u"n"_s, {}}}));
}

TEST(RunOptions, MayScopeARun)
{
    QString problem;
    EXPECT_TRUE(readRunOptions({u"--scoped"_s, u"a.wf"_s}, problem).isScoped);
    EXPECT_FALSE(readRunOptions({u"a.wf"_s}, problem).isScoped);
    EXPECT_EQ(problem, QString());
}

TEST(RunOptions, AreRefusedWithAReason)
{
    EXPECT_EQ(problemWith({}), u"which file?"_s);
    EXPECT_EQ(problemWith({u"a.wf"_s, u"b.wf"_s}), u"one file at a time, not also b.wf"_s);
    EXPECT_EQ(problemWith({u"--fast"_s, u"a.wf"_s}), u"there is no option --fast"_s);
    EXPECT_EQ(problemWith({u"a.wf"_s, u"--timeout"_s}), u"--timeout needs a value"_s);
    for (const QString &seconds : {u"0"_s, u"-1"_s, u"soon"_s, u"inf"_s, u"nan"_s})
        EXPECT_TRUE(problemWith({u"a.wf"_s, u"--timeout"_s, seconds}).startsWith(u"--timeout takes"_s))
            << seconds.toStdString();
    for (const QString &setting : {u"=x"_s, u"x"_s, u"2=x"_s, u"a b=x"_s})
        EXPECT_TRUE(problemWith({u"a.wf"_s, u"--set"_s, setting}).startsWith(u"--set takes"_s))
            << setting.toStdString();
}
