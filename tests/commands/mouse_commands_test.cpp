#include "support/script_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::recording::ScriptBench;

TEST(MouseCommands, ClickIsDownWaitUpWait)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"mouse.click"_s),
        (QStringList{u"mouse 2"_s, u"wait 200"_s, u"mouse 4"_s, u"wait 200"_s}));
}
