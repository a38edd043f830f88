#include "library/settings_file.h"

#include "library/library_bench.h"
#include "platform/linux/file_paths.h"
#include "platform/linux/linux_text_codec.h"

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class SettingsFileTest : public testing::Test
{
protected:
    QString read(const QByteArray &content) { return profileValue(content, u"hotkey", u"hotkey", codec); }
    QByteArray write(const QByteArray &content, const QString &value = u"Ctrl+Q"_s)
    {
        return withProfileValue(content, u"hotkey", u"hotkey", value, codec);
    }

    LinuxTextCodec codec;
    recording::ProgramFolder folder;
    FilePaths paths{folder.path() + u"/plum"_s};
    SettingsFile settings{paths, codec};
};

} // namespace

TEST_F(SettingsFileTest, readsAValue)
{
    EXPECT_EQ(read("[hotkey]\r\nhotkey=Ctrl+Q\r\n"), u"Ctrl+Q"_s);
}

TEST_F(SettingsFileTest, namesAreComparedWithoutLetterCase)
{
    EXPECT_EQ(read("[HotKey]\r\nHOTKEY=Alt+A"), u"Alt+A"_s);
}

TEST_F(SettingsFileTest, blanksAroundNamesAndValuesDoNotCount)
{
    EXPECT_EQ(read(" \t[ hotkey ] \r\n  hotkey \t=  Alt+A \t\r\n"), u"Alt+A"_s);
}

TEST_F(SettingsFileTest, onePairOfQuotesIsTakenOff)
{
    EXPECT_EQ(read("[hotkey]\r\nhotkey=\" a \"\r\n"), u" a "_s);
    EXPECT_EQ(read("[hotkey]\r\nhotkey='a'\r\n"), u"a"_s);
    EXPECT_EQ(read("[hotkey]\r\nhotkey=\"\"a\"\"\r\n"), u"\"a\""_s);
    EXPECT_EQ(read("[hotkey]\r\nhotkey=\"a'\r\n"), u"\"a'"_s);
    EXPECT_EQ(read("[hotkey]\r\nhotkey=\"\r\n"), u"\""_s);
}

TEST_F(SettingsFileTest, missingSectionsKeysAndFilesAreEmpty)
{
    EXPECT_EQ(read("[other]\r\nhotkey=x\r\n"), QString());
    EXPECT_EQ(read("[hotkey]\r\nother=x\r\n"), QString());
    EXPECT_EQ(read("hotkey=x\r\n"), QString());
    EXPECT_EQ(read(""), QString());
    EXPECT_EQ(settings.ReadSetting(u"hotkey"_s, u"hotkey"_s), QString());
}

TEST_F(SettingsFileTest, aCommentIsNoKey)
{
    EXPECT_EQ(read("[hotkey]\r\n;hotkey=x\r\nhotkey=y\r\n"), u"y"_s);
}

TEST_F(SettingsFileTest, theFirstOfSeveralCounts)
{
    EXPECT_EQ(read("[hotkey]\r\nhotkey=a\r\nhotkey=b\r\n[hotkey]\r\nhotkey=c\r\n"), u"a"_s);
}

TEST_F(SettingsFileTest, everyLineEndIsUnderstood)
{
    EXPECT_EQ(read("[hotkey]\nhotkey=a\n"), u"a"_s);
    EXPECT_EQ(read("[hotkey]\rhotkey=a\r"), u"a"_s);
}

TEST_F(SettingsFileTest, aValueHas1024CharactersAtMost)
{
    EXPECT_EQ(read("[hotkey]\r\nhotkey=" + QByteArray(1024, 'x')).size(), 1024);
    EXPECT_EQ(read("[hotkey]\r\nhotkey=" + QByteArray(5000, 'x')).size(), 1024);
}

TEST_F(SettingsFileTest, aLineInAnotherEncodingDisturbsNoOther)
{
    const QByteArray chinese = "[hotkey]\r\n;\xc4\xe3\xba\xc3\r\nhotkey=Alt+B\r\n";
    EXPECT_EQ(read(chinese), u"Alt+B"_s);
    EXPECT_EQ(write(chinese, u"你"_s), "[hotkey]\r\n;\xc4\xe3\xba\xc3\r\nhotkey=\xe4\xbd\xa0\r\n");
    EXPECT_EQ(read(write(chinese, u"你"_s)), u"你"_s);
}

TEST_F(SettingsFileTest, writingIntoAnEmptyFileMakesTheSection)
{
    EXPECT_EQ(write(""), "[hotkey]\r\nhotkey=Ctrl+Q\r\n");
}

TEST_F(SettingsFileTest, writingReplacesTheValueAndKeepsTheRest)
{
    EXPECT_EQ(write("; mine\r\n[a]\r\nhotkey = 1\r\n\r\n[HOTKEY]\r\n Hotkey = old\r\nb=\"2\"\r\n[c]\nx=y"),
        "; mine\r\n[a]\r\nhotkey = 1\r\n\r\n[HOTKEY]\r\nhotkey=Ctrl+Q\r\nb=\"2\"\r\n[c]\nx=y");
}

TEST_F(SettingsFileTest, aNewKeyGoesToTheEndOfItsSection)
{
    EXPECT_EQ(write("[hotkey]\r\na=1\r\n\r\n[z]\r\n"), "[hotkey]\r\na=1\r\nhotkey=Ctrl+Q\r\n\r\n[z]\r\n");
    EXPECT_EQ(write("[hotkey]"), "[hotkey]\r\nhotkey=Ctrl+Q\r\n");
}

TEST_F(SettingsFileTest, aNewSectionGoesToTheEndOfTheFile)
{
    EXPECT_EQ(write("[a]\r\nx=1"), "[a]\r\nx=1\r\n[hotkey]\r\nhotkey=Ctrl+Q\r\n");
}

TEST_F(SettingsFileTest, writesToTheDiskAndReadsBack)
{
    EXPECT_FALSE(settings.exists());
    settings.WriteSetting(u"hotkey"_s, u"hotkey"_s, u"Shift+B"_s);
    EXPECT_TRUE(settings.exists());
    EXPECT_EQ(recording::bytesOf(folder.setIni()), "[hotkey]\r\nhotkey=Shift+B\r\n");
    EXPECT_EQ(settings.ReadSetting(u"hotkey"_s, u"hotkey"_s), u"Shift+B"_s);
}

TEST_F(SettingsFileTest, aWriteThatFailsIsSilent)
{
    recording::writeBytes(folder.path() + u"/config/load"_s, "a file where a folder should be");
    settings.WriteSetting(u"hotkey"_s, u"hotkey"_s, u"Shift+B"_s);
    EXPECT_EQ(recording::bytesOf(folder.path() + u"/config/load"_s), "a file where a folder should be");
}

} // namespace plum
