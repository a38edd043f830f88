#include "library/library_bench.h"
#include "support/small_disk.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <sys/stat.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::packageOf;
using recording::writeBytes;

namespace {

class AppLibraryTest : public testing::Test, protected recording::LibraryBench
{
protected:
    QStringList said() const { return log.lines(); }
    QStringList listed() const { return lists.List.stringList(); }
};

void fill(const QString &path)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (file.write(QByteArray(4096, 'x')) == 4096) { }
}

} // namespace

TEST_F(AppLibraryTest, createMakesTheFolderTheScriptAndTheListEntry)
{
    EXPECT_TRUE(appLibrary.CreateApp(u"note"_s, u"time.sleep \"1\"\r\n"_s));
    EXPECT_EQ(bytesOf(folder.script(u"note"_s)), "time.sleep \"1\"\r\n");
    EXPECT_EQ(said(), QStringList(u"message! Successfully"_s));
    EXPECT_EQ(bytesOf(folder.configTxt()), "note\r\n");
}

TEST_F(AppLibraryTest, whatTheUserIsToldIsAlreadySaved)
{
    QByteArrayList saved;
    dialogs.onMessage = [&] { saved += bytesOf(folder.configTxt()); };
    appLibrary.CreateApp(u"note"_s, {});
    appLibrary.RenameApp(u"note"_s, u"letter"_s);
    appLibrary.InstallPackage(folder.addPackage(u"calc.wfp"_s, packageOf({{u"main.wf"_s, "x"}})), u"calc"_s);
    EXPECT_EQ(said(), QStringList(3, u"message! Successfully"_s));
    EXPECT_EQ(saved, QByteArrayList({"note\r\n", "letter\r\n", "calc\r\nletter\r\n"}));
}

TEST_F(AppLibraryTest, createWithoutKeywordAsksForOne)
{
    EXPECT_FALSE(appLibrary.CreateApp({}, u"x"_s));
    EXPECT_EQ(said(), QStringList(u"message! Keyword is required"_s));
    EXPECT_TRUE(listed().isEmpty());
}

TEST_F(AppLibraryTest, createRefusesAnExistingKeywordAndKeepsItsScript)
{
    folder.addApp(u"note"_s, "old");
    EXPECT_FALSE(appLibrary.CreateApp(u"note"_s, u"new"_s));
    EXPECT_EQ(said(), QStringList(u"message The Keyword already exists, whether it is renamed ?"_s));
    EXPECT_EQ(bytesOf(folder.script(u"note"_s)), "old");
}

TEST_F(AppLibraryTest, createFindsAnExistingFolderWithoutRegardToLetterCase)
{
    folder.addApp(u"Note"_s);
    EXPECT_FALSE(appLibrary.CreateApp(u"nOTE"_s, {}));
    EXPECT_EQ(said(), QStringList(u"message The Keyword already exists, whether it is renamed ?"_s));
}

TEST_F(AppLibraryTest, createWithAForbiddenCharacterFailsWhenTheFolderIsMade)
{
    for (const QChar c : u"\\/:*?\"<|>"_s) {
        log.clear();
        EXPECT_FALSE(appLibrary.CreateApp(u"a"_s + c + u"b"_s, {}));
        EXPECT_EQ(said(), QStringList(u"message! Can not exist *[\\/:*?\"<|>]*"_s));
    }
    EXPECT_FALSE(QFile::exists(folder.apps()));
}

TEST_F(AppLibraryTest, createOutsideTheLibraryMakesNothing)
{
    folder.addApp(u"a"_s);
    for (const QString &name :
        {u".."_s, u"."_s, u"../x"_s, u"..\\x"_s, u"/tmp/plum-x"_s, u"C:\\x"_s, QString(QChar(0))}) {
        EXPECT_FALSE(appLibrary.CreateApp(name, u"x"_s));
        EXPECT_FALSE(appLibrary.SaveApp(name, u"x"_s));
    }
    EXPECT_EQ(QDir(folder.path() + u"/config"_s).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
        QStringList(u"apps"_s));
    EXPECT_EQ(QDir(folder.apps()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList(u"a"_s));
}

TEST_F(AppLibraryTest, createWritesTheTextAsItStands)
{
    appLibrary.CreateApp(u"a"_s, u"one\ntwo\rthree\r\n\u00e9\u4f60"_s);
    EXPECT_EQ(bytesOf(folder.script(u"a"_s)), u"one\ntwo\rthree\r\n\u00e9\u4f60"_s.toUtf8());
}

TEST_F(AppLibraryTest, createWhereFoldersCannotBeMadeSaysErrorAndListsNothing)
{
    writeBytes(folder.path() + u"/config/apps"_s, "a file where the library should be");
    EXPECT_FALSE(appLibrary.CreateApp(u"note"_s, {}));
    EXPECT_EQ(said(), QStringList(u"message! Error"_s));
    EXPECT_TRUE(listed().isEmpty());
}

TEST_F(AppLibraryTest, namesWithEmojiQuotesTrailingBlanksAnd255BytesWork)
{
    const QString longest(255, u'n');
    for (const QString &name : {u"\U0001F680 go"_s, u"it's"_s, u"blank "_s, longest}) {
        EXPECT_TRUE(appLibrary.CreateApp(name, u"x"_s)) << qPrintable(name);
        EXPECT_EQ(bytesOf(folder.script(name)), "x");
    }
    EXPECT_EQ(listFile.load(), listed());
    for (const QString &name : listed())
        EXPECT_TRUE(appLibrary.DeleteApp(name));
    EXPECT_TRUE(QDir(folder.apps()).isEmpty());
}

TEST_F(AppLibraryTest, aNameOf256BytesSaysErrorAndWhy)
{
    EXPECT_FALSE(appLibrary.CreateApp(QString(256, u'n'), {}));
    EXPECT_EQ(said(), QStringList(u"message! Error\n\nThis keyword is too long for the name of a folder."_s));
}

TEST_F(AppLibraryTest, aFullDiskKeepsTheOldScriptAndOrder)
{
    const test::SmallDisk disk(folder.path() + u"/config"_s, 64 << 10);
    if (!disk.isThere())
        GTEST_SKIP() << "no right to make a small disk";
    ASSERT_TRUE(appLibrary.CreateApp(u"note"_s, u"old"_s));
    fill(folder.path() + u"/config/filler"_s);
    log.clear();

    EXPECT_FALSE(appLibrary.SaveApp(u"note"_s, QString(100000, u'x')));
    EXPECT_FALSE(appLibrary.CreateApp(u"other"_s, QString(100000, u'x')));
    listFile.ConfigSave(QStringList(20000, u"keyword"_s));

    EXPECT_EQ(said(), QStringList({u"message! Error"_s, u"message! Error"_s}));
    EXPECT_EQ(bytesOf(folder.script(u"note"_s)), "old");
    EXPECT_FALSE(QFile::exists(folder.apps(u"other"_s)));
    EXPECT_EQ(bytesOf(folder.configTxt()), "note\r\n");
}

TEST_F(AppLibraryTest, saveReplacesTheScript)
{
    folder.addApp(u"note"_s, "old");
    EXPECT_TRUE(appLibrary.SaveApp(u"note"_s, u"new"_s));
    EXPECT_EQ(bytesOf(folder.script(u"note"_s)), "new");
    EXPECT_EQ(said(), QStringList(u"message! Successfully"_s));
}

TEST_F(AppLibraryTest, saveWithoutKeywordAsksForOne)
{
    EXPECT_FALSE(appLibrary.SaveApp({}, u"x"_s));
    EXPECT_EQ(said(), QStringList(u"message! Keyword is required"_s));
}

TEST_F(AppLibraryTest, saveWithoutFolderSaysError)
{
    EXPECT_FALSE(appLibrary.SaveApp(u"gone"_s, u"x"_s));
    EXPECT_EQ(said(), QStringList(u"message! Error"_s));
    EXPECT_FALSE(QFile::exists(folder.apps(u"gone"_s)));
}

TEST_F(AppLibraryTest, renameMovesTheFolderAndTheFirstEqualItem)
{
    folder.addApp(u"a"_s, "A");
    lists.List.setStringList({u"z"_s, u"a"_s, u"a"_s});
    EXPECT_TRUE(appLibrary.RenameApp(u"a"_s, u"b"_s));
    EXPECT_EQ(bytesOf(folder.script(u"b"_s)), "A");
    EXPECT_FALSE(QFile::exists(folder.apps(u"a"_s)));
    EXPECT_EQ(said(), QStringList(u"message! Successfully"_s));
    EXPECT_EQ(bytesOf(folder.configTxt()), "z\r\nb\r\na\r\n");
}

TEST_F(AppLibraryTest, renameToAnExistingKeywordSaysSoAndChangesNothing)
{
    folder.addApp(u"a"_s, "A");
    folder.addApp(u"b"_s, "B");
    lists.List.setStringList({u"a"_s, u"b"_s});
    EXPECT_FALSE(appLibrary.RenameApp(u"a"_s, u"b"_s));
    EXPECT_EQ(said(), QStringList(u"message! Keyword already exists"_s));
    EXPECT_EQ(bytesOf(folder.script(u"a"_s)), "A");
    EXPECT_EQ(bytesOf(folder.script(u"b"_s)), "B");
    EXPECT_EQ(listed(), QStringList({u"a"_s, u"b"_s}));
    EXPECT_FALSE(QFile::exists(folder.configTxt()));
}

TEST_F(AppLibraryTest, aPlainFileTakesItsNameToo)
{
    folder.addApp(u"a"_s, "A");
    writeBytes(folder.apps(u"taken"_s), "x");
    EXPECT_FALSE(appLibrary.CreateApp(u"taken"_s, u"new"_s));
    EXPECT_FALSE(appLibrary.RenameApp(u"a"_s, u"TAKEN"_s));
    EXPECT_EQ(said(),
        QStringList({u"message The Keyword already exists, whether it is renamed ?"_s,
            u"message! Keyword already exists"_s}));
    EXPECT_EQ(appLibrary.DropPackage(u"/tmp/taken.wfp"_s), AppLibrary::Dropped::NeedsName);
    EXPECT_EQ(bytesOf(folder.apps(u"taken"_s)), "x");
}

TEST_F(AppLibraryTest, deletingANameThatAFileHasRemovesTheItemAlone)
{
    writeBytes(folder.apps(u"taken"_s), "x");
    lists.List.setStringList({u"taken"_s});
    EXPECT_TRUE(appLibrary.DeleteApp(u"taken"_s));
    EXPECT_TRUE(listed().isEmpty());
    EXPECT_EQ(bytesOf(folder.apps(u"taken"_s)), "x");
}

TEST_F(AppLibraryTest, renameToNothingIsIgnoredSilently)
{
    folder.addApp(u"a"_s);
    EXPECT_FALSE(appLibrary.RenameApp(u"a"_s, {}));
    EXPECT_TRUE(said().isEmpty());
    EXPECT_TRUE(QFile::exists(folder.apps(u"a"_s)));
}

TEST_F(AppLibraryTest, renameOutOfTheLibraryMovesNothing)
{
    folder.addApp(u"a"_s);
    lists.List.setStringList({u"a"_s});
    for (const QString &name : {u".."_s, u"../out"_s, u"..\\out"_s, folder.path() + u"/out"_s})
        EXPECT_FALSE(appLibrary.RenameApp(u"a"_s, name));
    for (const QString &name : {QString(), u".."_s, u"."_s})
        EXPECT_FALSE(appLibrary.RenameApp(name, u"b"_s));
    EXPECT_TRUE(QFile::exists(folder.script(u"a"_s)));
    EXPECT_EQ(
        QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList(u"config"_s));
    EXPECT_EQ(listed(), QStringList(u"a"_s));
}

TEST_F(AppLibraryTest, renamingAnAppWhoseFolderIsGoneSaysError)
{
    lists.List.setStringList({u"gone"_s});
    EXPECT_FALSE(appLibrary.RenameApp(u"gone"_s, u"b"_s));
    EXPECT_EQ(said(), QStringList(u"message! Error"_s));
    EXPECT_EQ(listed(), QStringList(u"gone"_s));
}

TEST_F(AppLibraryTest, deleteAnsweredWithNoChangesNothing)
{
    folder.addApp(u"a"_s);
    lists.List.setStringList({u"a"_s});
    dialogs.answer = false;
    EXPECT_FALSE(appLibrary.DeleteApp(u"a"_s));
    EXPECT_EQ(said(), QStringList(u"ask 确定删除?|提示|a"_s));
    EXPECT_TRUE(QFile::exists(folder.script(u"a"_s)));
    EXPECT_EQ(listed(), QStringList(u"a"_s));
}

TEST_F(AppLibraryTest, deleteAnsweredWithYesRemovesFolderItemAndLine)
{
    folder.addApp(u"a"_s);
    writeBytes(folder.apps(u"a/deep/.hidden"_s), "x");
    QFile::setPermissions(folder.apps(u"a/deep"_s), QFile::ReadOwner | QFile::ExeOwner);
    lists.List.setStringList({u"a"_s, u"b"_s});
    EXPECT_TRUE(appLibrary.DeleteApp(u"a"_s));
    EXPECT_FALSE(QFile::exists(folder.apps(u"a"_s)));
    EXPECT_EQ(bytesOf(folder.configTxt()), "b\r\n");
}

TEST_F(AppLibraryTest, deletingAFolderThatIsGoneRemovesTheItem)
{
    lists.List.setStringList({u"gone"_s});
    EXPECT_TRUE(appLibrary.DeleteApp(u"gone"_s));
    EXPECT_TRUE(listed().isEmpty());
    EXPECT_EQ(bytesOf(folder.configTxt()), "\r\n");
}

TEST_F(AppLibraryTest, deleteWithNothingSelectedDeletesNothing)
{
    folder.addApp(u"a"_s);
    EXPECT_FALSE(appLibrary.DeleteApp({}));
    EXPECT_TRUE(said().isEmpty());
    EXPECT_TRUE(QFile::exists(folder.script(u"a"_s)));
}

TEST_F(AppLibraryTest, deletingANameThatLeavesTheLibraryRemovesItsItemAlone)
{
    folder.addApp(u"a"_s);
    const QStringList hostile{u".."_s, u"."_s, u"../.."_s, u"..\\load"_s, folder.path()};
    lists.List.setStringList(hostile);
    for (const QString &name : hostile)
        EXPECT_TRUE(appLibrary.DeleteApp(name));
    EXPECT_TRUE(listed().isEmpty());
    EXPECT_TRUE(QFile::exists(folder.script(u"a"_s)));
}

TEST_F(AppLibraryTest, deletingALinkLeavesWhatItPointsTo)
{
    writeBytes(folder.path() + u"/elsewhere/kept.txt"_s, "kept");
    folder.addApp(u"a"_s);
    QFile::link(folder.path() + u"/elsewhere"_s, folder.apps(u"linked"_s));
    QFile::link(folder.path() + u"/elsewhere"_s, folder.apps(u"a/inner"_s));
    EXPECT_TRUE(appLibrary.DeleteApp(u"linked"_s));
    EXPECT_TRUE(appLibrary.DeleteApp(u"a"_s));
    EXPECT_EQ(
        QDir(folder.apps()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System), QStringList());
    EXPECT_EQ(bytesOf(folder.path() + u"/elsewhere/kept.txt"_s), "kept");
}

TEST_F(AppLibraryTest, anInstallInsertsAtTheTopOfBothLists)
{
    lists.List.setStringList({u"x"_s});
    lists.List2.setStringList({u"y"_s});
    const QString package = folder.addPackage(u"p.wfp"_s, packageOf({{u"main.wf"_s, "x"}}));
    EXPECT_TRUE(appLibrary.InstallPackage(package, u"calc"_s));
    EXPECT_EQ(said(), QStringList(u"message! Successfully"_s));
    EXPECT_EQ(listed(), QStringList({u"calc"_s, u"x"_s}));
    EXPECT_EQ(lists.List2.stringList(), QStringList({u"calc"_s, u"y"_s}));
    EXPECT_EQ(bytesOf(folder.configTxt()), "calc\r\nx\r\n");
}

TEST_F(AppLibraryTest, installOutsideTheLibraryExtractsNothing)
{
    const QString package = folder.addPackage(u"p.wfp"_s, packageOf({{u"main.wf"_s, "x"}}));
    for (const QString &name : {u".."_s, QString(), u"../x"_s, u"/tmp/x"_s}) {
        log.clear();
        EXPECT_FALSE(appLibrary.InstallPackage(package, name));
        EXPECT_TRUE(said().value(0).startsWith(u"message! Error\n\n"_s));
    }
    EXPECT_FALSE(QFile::exists(folder.path() + u"/config"_s));
}

TEST_F(AppLibraryTest, aPackageFileWhoseNameIsNoKeywordGetsAClearMessage)
{
    folder.addApp(u"p"_s, "mine");
    const QString package = folder.addPackage(u"p|q.wfp"_s, packageOf({{u"main.wf"_s, "x"}}));
    EXPECT_EQ(appLibrary.DropPackage(package), AppLibrary::Dropped::Refused);
    EXPECT_EQ(said(),
        QStringList(u"message! Error\n\nThe package's name cannot be a keyword. "
                    "Can not exist *[\\/:*?\"<|>]*"_s));
    EXPECT_EQ(folder.inApps(), QStringList(u"p"_s));
    EXPECT_EQ(bytesOf(folder.script(u"p"_s)), "mine");
}

TEST_F(AppLibraryTest, aDroppedPackageIsNotInstalledByItself)
{
    const QString package = folder.addPackage(u"calc.wfp"_s, packageOf({{u"main.wf"_s, "x"}}));
    EXPECT_EQ(appLibrary.DropPackage(package), AppLibrary::Dropped::MayInstall);
    EXPECT_TRUE(listed().isEmpty());
    EXPECT_TRUE(folder.inApps().isEmpty());
}

TEST_F(AppLibraryTest, aPackagesKeywordIsItsNameUpToTheLastDot)
{
    EXPECT_EQ(AppLibrary::packageKeyword(u"C:\\in\\a.b.wfp"_s), u"a.b"_s);
    EXPECT_EQ(AppLibrary::packageKeyword(u"/in/a.b.wfp"_s), u"a.b"_s);
}

TEST_F(AppLibraryTest, aDroppedPackageOfAnExistingAppAsksForANewKeyword)
{
    folder.addApp(u"calc"_s, "mine");
    EXPECT_EQ(appLibrary.DropPackage(u"/tmp/calc.wfp"_s), AppLibrary::Dropped::NeedsName);
    EXPECT_EQ(AppLibrary::packageKeyword(u"/tmp/calc.wfp"_s), u"calc"_s);
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "mine");
}

TEST_F(AppLibraryTest, aDeletedAppGoesToTheTrash)
{
    folder.addApp(u"a"_s, "mine");
    lists.List.setStringList({u"a"_s});
    EXPECT_TRUE(appLibrary.DeleteApp(u"a"_s));
    EXPECT_EQ(said(), QStringList({u"ask 确定删除?|提示|a"_s, u"trash a"_s}));
    EXPECT_EQ(trash.read(u"a/main.wf"_s), "mine");
    EXPECT_FALSE(QFile::exists(folder.path() + u"/config/unpacking"_s));
}

TEST_F(AppLibraryTest, withoutATrashAnAppIsDeletedForGood)
{
    trash.isThere = false;
    folder.addApp(u"a"_s, "mine");
    lists.List.setStringList({u"a"_s});
    EXPECT_TRUE(appLibrary.DeleteApp(u"a"_s));
    EXPECT_TRUE(folder.inApps().isEmpty());
    EXPECT_FALSE(QFile::exists(folder.path() + u"/config/unpacking"_s));
}

TEST_F(AppLibraryTest, otherDroppedFilesAreIgnored)
{
    for (const QString &path :
        {u"/tmp/calc.zip"_s, u"/tmp/calc.WFP"_s, u"/tmp/wfp"_s, u"https://x/"_s, u""_s})
        EXPECT_EQ(appLibrary.DropPackage(path), AppLibrary::Dropped::Ignored);
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(AppLibraryTest, listAppsSkipsFiles)
{
    folder.addApp(u"b"_s);
    folder.addApp(u"A"_s);
    writeBytes(folder.apps(u"readme.txt"_s), "x");
    QStringList names{u"first"_s};
    appLibrary.ListApps(names);
    EXPECT_EQ(names, QStringList({u"first"_s, u"A"_s, u"b"_s}));
}

TEST_F(AppLibraryTest, listAppsSkipsNoFolderButTheTwoThatAreNone)
{
    folder.addApp(u".dotted"_s);
    folder.addApp(u"...x"_s);
    writeBytes(folder.apps(u".file"_s), "x");
    QStringList names;
    appLibrary.ListApps(names);
    EXPECT_EQ(names, QStringList({u"...x"_s, u".dotted"_s}));
}

TEST_F(AppLibraryTest, openAppFolderOpensItOrTheLibrary)
{
    appLibrary.OpenAppFolder(u"a"_s);
    appLibrary.OpenAppFolder({});
    EXPECT_EQ(said(),
        QStringList({u"open "_s + folder.path() + u"\\config\\apps\\a\\||1"_s,
            u"open "_s + folder.path() + u"\\config\\apps\\||1"_s}));
}

TEST_F(AppLibraryTest, checkKeywordRefusesAColonWithBlanksAround)
{
    EXPECT_FALSE(appLibrary.CheckKeyword(u"  a:b  "_s));
    EXPECT_EQ(said(), QStringList(u"message! Can not exist *[\\/:*?\"<|>]*"_s));
}

TEST_F(AppLibraryTest, checkKeywordRefusesNothingSilentlyAndTakesTheRest)
{
    EXPECT_FALSE(appLibrary.CheckKeyword({}));
    EXPECT_TRUE(appLibrary.CheckKeyword(u"a b.c"_s));
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(AppLibraryTest, guides)
{
    EXPECT_EQ(guideOf(u"//guide:Types a date"_s).kind, AppGuide::Kind::Text);
    EXPECT_EQ(guideOf(u"//guide:Types a date"_s).content, u"Types a date"_s);
    EXPECT_EQ(guideOf(u"//guide:https://example.org/"_s).kind, AppGuide::Kind::Address);
    EXPECT_EQ(guideOf(u"//guide:https://example.org/"_s).content, u"https://example.org/"_s);
    EXPECT_EQ(guideOf(u"// guide:text"_s).kind, AppGuide::Kind::None);
    EXPECT_EQ(guideOf(u"guide:text"_s).kind, AppGuide::Kind::None);
    EXPECT_EQ(guideOf({}).kind, AppGuide::Kind::None);
    folder.addApp(u"a"_s, "//guide:hello\r\nmouse.click\r\n");
    EXPECT_EQ(appLibrary.guide(u"a"_s).content, u"hello"_s);
    EXPECT_EQ(appLibrary.guide({}).kind, AppGuide::Kind::None);
}

TEST_F(AppLibraryTest, aScriptThatIsNoFileIsNotWaitedFor)
{
    ASSERT_TRUE(QDir().mkpath(folder.apps(u"pipe"_s)));
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.script(u"pipe"_s)).constData(), 0600), 0);
    EXPECT_EQ(appLibrary.guide(u"pipe"_s).kind, AppGuide::Kind::None);
    EXPECT_EQ(appLibrary.scriptFile(u"pipe"_s, u"main.wf"_s).shown(), QString());
}

TEST_F(AppLibraryTest, aScriptIsReadWithoutItsFinalLineEnd)
{
    folder.addApp(u"a"_s, "one\r\ntwo\r\n");
    EXPECT_EQ(appLibrary.scriptFile(u"a"_s, u"main.wf"_s).shown(), u"one\r\ntwo"_s);
    EXPECT_EQ(appLibrary.scriptFile(u"gone"_s, u"main.wf"_s).shown(), QString());
}

TEST_F(AppLibraryTest, filteringFindsTheTextAnywhereAndMindsLetterCase)
{
    lists.List.setStringList({u"notes"_s, u"piano"_s, u"NOTE"_s});
    lists.filter(u"no"_s);
    EXPECT_EQ(lists.List2.stringList(), QStringList({u"notes"_s, u"piano"_s}));
}

} // namespace plum
