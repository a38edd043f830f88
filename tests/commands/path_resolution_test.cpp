#include "commands/path_resolution.h"

#include "engine/run_state.h"
#include "platform/recording/recording_platform.h"
#include "support/recording_folders.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

class PathResolution : public testing::Test
{
protected:
    PathResolution() { state.runctx[0] = u"D:\\scripts\\mine\\main.wf"_s; }

    QString resolved(const QString &path) const { return ResolvePath(path, state, folders); }

    RunState state{};
    recording::RecordingPaths paths;
    recording::RecordingFolders folders{paths};
};

} // namespace

TEST_F(PathResolution, SlashesBecomeBackslashes)
{
    EXPECT_EQ(resolved(u"C:/a\\b/c.txt"_s), u"C:\\a\\b\\c.txt"_s);
    EXPECT_EQ(resolved(QString()), QString());
}

TEST_F(PathResolution, PlaceholderIsTheRunningScriptsFolder)
{
    EXPECT_EQ(resolved(u"_pfold_/data/in.txt"_s), u"D:\\scripts\\mine\\data\\in.txt"_s);
    EXPECT_EQ(resolved(u"_ppfold_\\in.txt"_s), u"D:\\scripts\\in.txt"_s);
    EXPECT_EQ(resolved(u"_pfold_"_s), u"D:\\scripts\\mine\\"_s);
}

TEST_F(PathResolution, WhileAnAppRunsBothPlaceholdersAreItsFolder)
{
    state.currentKeyword = u"mail"_s;
    EXPECT_EQ(resolved(u"_pfold_/in.txt"_s), u"C:\\plum\\config\\apps\\mail\\in.txt"_s);
    EXPECT_EQ(resolved(u"_ppfold_/in.txt"_s), u"C:\\plum\\config\\apps\\mail\\in.txt"_s);
}

TEST_F(PathResolution, OtherHeadsStayAsWritten)
{
    EXPECT_EQ(resolved(u"_pfold/in.txt"_s), u"_pfold\\in.txt"_s);
    EXPECT_EQ(resolved(u"_PFOLD_/in.txt"_s), u"_PFOLD_\\in.txt"_s);
    EXPECT_EQ(resolved(u"C:/_pfold_/in.txt"_s), u"C:\\_pfold_\\in.txt"_s);
    EXPECT_EQ(resolved(u"_private/in.txt"_s), u"_private\\in.txt"_s);
}
