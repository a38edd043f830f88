#include "stepping/run_control.h"

#include "control_bench.h"
#include "engine/run_time_error.h"
#include "platform/stop_signal.h"
#include "support/run_witness.h"

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

class RunControlTest : public test::ControlBench
{
};

} // namespace

TEST_F(RunControlTest, HoldsNothingUnasked)
{
    run1({u"set.a \"1\""_s, u"mouse.move \"1:1\""_s});
    run2("set.a 1\n");
    EXPECT_TRUE(held.isEmpty()) << qPrintable(held.join(u'|'));
}

TEST_F(RunControlTest, HoldsAtBreakpoints)
{
    control.setBreakpoints({}, {3});
    QStringList before;
    onHold = [&](const RunControl::Hold &) { before = bench.events(); };
    run1({u"mouse.move \"1:1\""_s, u"// nothing"_s, u"mouse.move \"2:2\""_s, u"mouse.move \"3:3\""_s});
    EXPECT_EQ(held, QStringList(u"breakpoint 3"_s));
    EXPECT_EQ(before.filter(u"move"_s).size(), 1) << "the line itself has not run";
    EXPECT_EQ(bench.events().filter(u"move"_s).size(), 3);
}

TEST_F(RunControlTest, ForgetsBreakpointsThatAreTakenAway)
{
    control.setBreakpoints({}, {1, 2});
    control.setBreakpoints({}, {2});
    run1({u"set.a \"1\""_s, u"set.a \"2\""_s});
    EXPECT_EQ(held, QStringList(u"breakpoint 2"_s));
    held.clear();
    control.setBreakpoints({}, {});
    run1({u"set.a \"1\""_s, u"set.a \"2\""_s});
    EXPECT_EQ(held, QStringList());
}

TEST_F(RunControlTest, HoldsNowhereWhileItIsOff)
{
    control.setBreakpoints({}, {1});
    control.setHoldsAtErrors({true, true});
    control.holdAtEntry();
    control.setEnabled(false);
    run2("set.a set.b\n");
    EXPECT_EQ(held, QStringList());
    EXPECT_EQ(error, u"b was never set"_s);
}

TEST_F(RunControlTest, StepsThroughRepeatedLinesOfEdition1)
{
    control.holdAtEntry();
    otherwise = Going::Over;
    run1({u"while.start \"count\",\"2\""_s, u"set.a \"1\""_s, u"while.end "_s, u"set.b \"1\""_s});
    EXPECT_EQ(held, (QStringList{u"entry 1"_s, u"step 2"_s, u"step 3"_s, u"step 2"_s, u"step 4"_s}));
}

TEST_F(RunControlTest, StepsThroughBlocksOfEdition2)
{
    control.holdAtEntry();
    otherwise = Going::Into;
    run2("repeat.times 2\n    set.a 1\nrepeat.end\nwhen.start set.a,is,2\n    set.b 1\nwhen.else\n    set.b "
         "2\nwhen.end\ntry.start\n    set.c set.x\ntry.failed why\n    set.d set.why\ntry.end\nset.e 1\n");
    EXPECT_EQ(held,
        (QStringList{u"entry 2"_s, u"step 3"_s, u"step 2"_s, u"step 3"_s, u"step 2"_s, u"step 5"_s,
            u"step 8"_s, u"step 11"_s, u"step 13"_s, u"step 15"_s}));
}

TEST_F(RunControlTest, StepsIntoPartsOverThemAndOutOfThem)
{
    const QByteArray script = "part.run twice,1,a\nset.b 1\npart.start twice,x\n    set.y set.x\n    "
                              "part.return set.y\npart.end\n";
    control.holdAtEntry();
    otherwise = Going::Into;
    run2(script);
    EXPECT_EQ(held, (QStringList{u"entry 2"_s, u"step 5"_s, u"step 6"_s, u"step 3"_s}));

    held.clear();
    control.holdAtEntry();
    otherwise = Going::Over;
    run2(script);
    EXPECT_EQ(held, (QStringList{u"entry 2"_s, u"step 3"_s}));

    held.clear();
    control.holdAtEntry();
    goings = {Going::Into, Going::Out};
    otherwise = Going::On;
    run2(script);
    EXPECT_EQ(held, (QStringList{u"entry 2"_s, u"step 5"_s, u"step 3"_s}));
}

TEST_F(RunControlTest, StepsBackWhereAPartEndsByItself)
{
    control.holdAtEntry();
    goings = {Going::Into, Going::Over, Going::On};
    run2("part.run p\nset.b 1\npart.start p\n    set.y 1\npart.end\n");
    EXPECT_EQ(held, (QStringList{u"entry 2"_s, u"step 5"_s, u"step 3"_s}));
}

TEST_F(RunControlTest, HoldsInFilesThatAScriptUses)
{
    files.write(u"more/parts.wf"_s, "//edition:2\npart.start p\n    set.y 1\npart.end\n");
    control.setBreakpoints(u"more/parts.wf"_s, {3});
    QStringList names;
    onHold = [&](const RunControl::Hold &hold) {
        for (int frame = 0; frame < hold.run.depth(); ++frame)
            names += u"%1 %2"_s.arg(hold.run.name(frame)).arg(hold.run.place(frame).line);
    };
    run2("part.use \"more/parts.wf\"\npart.run p\n");
    EXPECT_EQ(error, QString());
    EXPECT_EQ(held, QStringList(u"breakpoint more/parts.wf:3"_s));
    EXPECT_EQ(names, (QStringList{u"p 3"_s, u"test.wf 3"_s}));
}

TEST_F(RunControlTest, HoldsAtTheLineBehindAPause)
{
    control.setBreakpoints({}, {1});
    onHold = [&](const RunControl::Hold &hold) {
        if (hold.cause == RunControl::Cause::Breakpoint)
            control.pause();
    };
    run1({u"set.a \"1\""_s, u"set.a \"2\""_s, u"set.a \"3\""_s});
    EXPECT_EQ(held, (QStringList{u"breakpoint 1"_s, u"pause 2"_s}));
}

TEST_F(RunControlTest, HoldsAtErrorsThatEndTheRun)
{
    control.setHoldsAtErrors({true, false});
    QString reason;
    onHold = [&](const RunControl::Hold &hold) { reason = hold.reason; };
    run2("try.start\n    set.a set.x\ntry.failed\ntry.end\nset.a set.y\n");
    EXPECT_EQ(held, QStringList(u"error 6"_s));
    EXPECT_EQ(reason, u"y was never set"_s);
    EXPECT_EQ(error, u"y was never set"_s) << "held, it fails all the same";
}

TEST_F(RunControlTest, HoldsAtErrorsThatTheScriptCatches)
{
    control.setHoldsAtErrors({false, true});
    run2("try.start\n    part.run p\ntry.failed\ntry.end\npart.start p\n    set.a set.x\npart.end\n");
    EXPECT_EQ(held, QStringList(u"error 7"_s));
    EXPECT_EQ(error, QString());
}

TEST_F(RunControlTest, HoldsAtAnErrorOfEdition1Once)
{
    control.setHoldsAtErrors({true, true});
    EXPECT_THROW(run1({u"while.start \"count\",\"3\""_s, u"set.n set.m"_s, u"mouse.move set.n"_s,
                     u"set.m \"x\""_s, u"while.end "_s}),
        RunTimeError);
    EXPECT_EQ(held, QStringList(u"error 3"_s));
}

TEST_F(RunControlTest, LeavesAHeldRunThatIsStoppedAtItsLine)
{
    control.setBreakpoints({}, {3});
    onHold = [](const RunControl::Hold &) { throw RunStopped(); };
    std::optional<RunStopped::Place> place;
    const auto stopped = [&](const std::function<void()> &run) {
        place.reset();
        try {
            run();
        } catch (const RunStopped &stop) {
            place = stop.place();
        }
        return place ? place->line : -1;
    };
    EXPECT_EQ(stopped([this] { run1({u"set.a \"1\""_s, u"set.a \"2\""_s, u"set.a \"3\""_s}); }), 2);
    EXPECT_EQ(stopped([this] { run2("set.a 1\nset.a 2\n"); }), 2);

    control.setBreakpoints({}, {});
    control.setHoldsAtErrors({true, true});
    EXPECT_EQ(stopped([this] { run2("set.a 1\nset.a set.x\n"); }), 2);
}

TEST_F(RunControlTest, HoldsRunsOfOneScriptAlone)
{
    control.setBreakpoints({}, {1, 2});
    control.setHoldsAtErrors({true, true});
    control.holdOnly(u"other"_s);
    run1({u"set.a \"1\""_s});
    run2("set.a set.x\n");
    EXPECT_EQ(held, QStringList());
    control.holdOnly(u"test.wf"_s);
    run2("part.run p\npart.start p\n    set.a 1\npart.end\n");
    EXPECT_EQ(held, QStringList(u"breakpoint 2"_s));
}

TEST_F(RunControlTest, TellsSomebodyElseOfTheSameRuns)
{
    test::RunWitness witness;
    control.tellAlso(&witness);
    control.setBreakpoints({}, {1});
    run1({u"set.a \"1\""_s});
    EXPECT_EQ(held, QStringList(u"breakpoint 1"_s));
    EXPECT_EQ(witness.heard, (QStringList{u"1 set.a \"1\""_s, u"field 0 1"_s, u"set a 1"_s, u"done"_s}));
    EXPECT_FALSE(control.wantsEveryLine());
    witness.wantsAll = true;
    EXPECT_TRUE(control.wantsEveryLine());
}

TEST_F(RunControlTest, LetsARunThatBeginsMeanwhileGoItsWay)
{
    control.setBreakpoints({}, {1});
    onHold = [&](const RunControl::Hold &) {
        if (held.size() == 1)
            bench.loop.RunLines(bench.state.runidx[0], bench.state.runidx[1]);
    };
    run1({u"set.a \"1\""_s, u"set.a \"2\""_s});
    EXPECT_EQ(held, QStringList(u"breakpoint 1"_s));
}
