#include "kit/pick_command.h"
#include "kit_process.h"

#include <gtest/gtest.h>

namespace plum::kit {
namespace {

using namespace Qt::StringLiterals;

PickOptions read(const QStringList &arguments, QString &problem)
{
    problem.clear();
    return readPickOptions(arguments, problem);
}

} // namespace

TEST(PickOptions, sayWhichLineAndForWhichScript)
{
    QString problem;
    EXPECT_EQ(read({}, problem).line, std::nullopt);
    EXPECT_EQ(read({u"--line"_s, u"color"_s}, problem).line, PickedLine::Colour);
    EXPECT_EQ(read({u"--edition"_s, u"1"_s}, problem).edition, Edition::One);
    EXPECT_EQ(read({}, problem).edition, Edition::Two);
    EXPECT_EQ(read({u"--in"_s, u"/"_s}, problem).folder, u"/"_s);
    EXPECT_EQ(problem, QString());
}

TEST(PickOptions, thatAreUnusableAreNamed)
{
    QString problem;
    read({u"--line"_s, u"point"_s}, problem);
    EXPECT_EQ(problem, u"--line takes move, color, window or picture, not \"point\""_s);
    read({u"--edition"_s, u"3"_s}, problem);
    EXPECT_EQ(problem, u"--edition takes 1 or 2, not \"3\""_s);
    read({u"--in"_s, u"/no/such/folder"_s}, problem);
    EXPECT_EQ(problem, u"there is no folder /no/such/folder"_s);
    read({u"--line"_s}, problem);
    EXPECT_EQ(problem, u"--line needs a value"_s);
    read({u"main.wf"_s}, problem);
    EXPECT_EQ(problem, u"there is no option main.wf"_s);
}

TEST(KitPick, endsWith2WhereThereIsNoDesktop)
{
    const test::KitRun run = test::runKit({u"pick"_s});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.errors, u"plumkit: there is no desktop that can be looked at\n"_s);
}

} // namespace plum::kit
