#include "support/script_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::recording::ScriptBench;

TEST(RunLoop, PausesTenMillisecondsBeforeEachLine)
{
    ScriptBench bench;
    bench.run({u"// a comment"_s, u""_s, u"set.a \"1\""_s, u"set.b \"2\""_s});
    EXPECT_EQ(bench.events(), (QStringList{u"wait 10"_s, u"wait 10"_s}));
}
