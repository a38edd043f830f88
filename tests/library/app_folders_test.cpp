#include "library/app_folders.h"

#include "platform/recording/recording_platform.h"
#include "support/recording_folders.h"

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class AppFoldersTest : public testing::Test
{
protected:
    recording::RecordingPaths paths;
    AppFolders folders{paths};
};

} // namespace

TEST_F(AppFoldersTest, everythingLiesBelowTheProgramFolder)
{
    EXPECT_EQ(folders.apps(), u"C:\\plum\\config\\apps"_s);
    EXPECT_EQ(folders.appFile(u"note"_s, u"main.wf"_s), u"C:\\plum\\config\\apps\\note\\main.wf"_s);
    EXPECT_EQ(folders.loadFile(u"set.ini"_s), u"C:\\plum\\config\\load\\set.ini"_s);
    EXPECT_EQ(folders.listFile(), u"C:\\plum\\config\\load\\config.txt"_s);
    EXPECT_EQ(folders.fixComponent(), u"C:\\plum\\config\\settings\\fix\\COMDLG32.OCX"_s);
    EXPECT_EQ(folders.file(u"note.wfp"_s), u"C:\\plum\\note.wfp"_s);
}

TEST_F(AppFoldersTest, theRootOfADriveGetsNoSecondSeparator)
{
    for (const QString &root : {u"C:\\"_s, u"/"_s}) {
        paths.folder = root;
        EXPECT_EQ(folders.apps(), root + u"config\\apps"_s);
        EXPECT_EQ(folders.loadFile(u"set.ini"_s), root + u"config\\load\\set.ini"_s);
        EXPECT_EQ(folders.browserHelper(), root + u"config\\module\\net\\browser\\browser.exe"_s);
    }
}

// What scripts see is written down a second time in the tests of the commands.
TEST_F(AppFoldersTest, scriptsSeeThePlacesTheyAlwaysSaw)
{
    const recording::RecordingFolders fixed(paths);
    EXPECT_EQ(folders.apps(), fixed.apps());
    EXPECT_EQ(folders.app(u"a b"_s), fixed.app(u"a b"_s));
    EXPECT_EQ(folders.appScript(u"a b"_s), fixed.appScript(u"a b"_s));
    EXPECT_EQ(folders.browserHelper(), fixed.browserHelper());
    EXPECT_EQ(folders.downloadHelper(), fixed.downloadHelper());
    EXPECT_EQ(folders.downloads(), fixed.downloads());
}

TEST_F(AppFoldersTest, aKeywordIsTheNameOfAFolder)
{
    for (const QChar c : u"\\/:*?\"<|>\t\n"_s)
        EXPECT_EQ(folders.fault(u"a"_s + c + u"b"_s), KeywordFault::Forbidden) << int(c.unicode());
    EXPECT_EQ(folders.fault(u"."_s), KeywordFault::Forbidden);
    EXPECT_EQ(folders.fault(u".."_s), KeywordFault::Forbidden);
    EXPECT_EQ(folders.fault({}), KeywordFault::Empty);
    for (const QString &good : {u"a b.c"_s, u".hidden"_s, u"it's"_s, u"\U0001F680"_s, u"笔记"_s})
        EXPECT_EQ(folders.fault(good), KeywordFault::None) << qPrintable(good);
}

TEST_F(AppFoldersTest, aKeywordHas255BytesAtMost)
{
    EXPECT_EQ(folders.fault(QString(255, u'n')), KeywordFault::None);
    EXPECT_EQ(folders.fault(QString(256, u'n')), KeywordFault::TooLong);
    EXPECT_EQ(folders.fault(QString(86, u'记')), KeywordFault::TooLong);
}

TEST_F(AppFoldersTest, devicesAndLostEndsMatterWhereNamesAreInterpreted)
{
    const QStringList devices{u"con"_s, u"NUL.txt"_s, u"lpt1"_s, u"aux "_s};
    const QStringList lostEnds{u"note "_s, u"note."_s};
    for (const QString &name : devices + lostEnds)
        EXPECT_EQ(folders.fault(name), KeywordFault::None) << qPrintable(name);
    paths.namesAreInterpreted = true;
    for (const QString &name : devices)
        EXPECT_EQ(folders.fault(name), KeywordFault::Device) << qPrintable(name);
    for (const QString &name : lostEnds)
        EXPECT_EQ(folders.fault(name), KeywordFault::EndIsLost) << qPrintable(name);
    EXPECT_EQ(folders.fault(u"console"_s), KeywordFault::None);
}

TEST_F(AppFoldersTest, everyFaultHasItsSentence)
{
    EXPECT_EQ(keywordMessage(KeywordFault::None), QString());
    EXPECT_EQ(keywordMessage(KeywordFault::Empty), u"Keyword is required"_s);
    EXPECT_EQ(keywordMessage(KeywordFault::Forbidden), u"Can not exist *[\\/:*?\"<|>]*"_s);
    for (const KeywordFault fault : {KeywordFault::Device, KeywordFault::EndIsLost, KeywordFault::TooLong})
        EXPECT_TRUE(keywordMessage(fault).endsWith(u'.'));
}

} // namespace plum
