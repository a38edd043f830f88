#include "archive/zip_builder.h"
#include "library/library_bench.h"
#include "support/file_size_limit.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::packageOf;
using recording::writeBytes;
using testing::buildArchive;
using testing::BuiltEntry;
using testing::deflatedEntry;
using testing::storedEntry;

namespace {

class PackageInstallerTest : public ::testing::Test, protected recording::LibraryBench
{
protected:
    QString put(const QByteArray &package) { return folder.addPackage(u"calc.wfp"_s, package); }

    InstallResult install(const QByteArray &package, CarriedFiles carried = CarriedFiles::All)
    {
        return installer.install({.path = put(package), .keyword = u"calc"_s, .carried = carried},
            [this](const QString &keyword) { listed += keyword; });
    }

    // Moves the app aside first, as the store does.
    InstallResult replace(const QByteArray &package)
    {
        EXPECT_TRUE(installer.setAside(u"calc"_s));
        EXPECT_EQ(folder.inApps(), QStringList());
        return install(package, CarriedFiles::UsersOwn);
    }

    bool nothingIsLeft() const { return !QFile::exists(folder.path() + u"/config/unpacking"_s); }

    QStringList listed;
};

struct BadPackage
{
    const char *what;
    QByteArray bytes;
    InstallFault fault;
};

QByteArray withBadChecksum()
{
    BuiltEntry entry = deflatedEntry("main.wf", "a script that was damaged on its way");
    entry.crc ^= 1;
    return buildArchive({storedEntry("first", "right"), entry});
}

QByteArray encrypted()
{
    BuiltEntry secret = storedEntry("secret", "x");
    secret.flags = 1;
    return buildArchive({storedEntry("main.wf", "x"), secret});
}

QByteArray withUnknownMethod()
{
    BuiltEntry entry = storedEntry("main.wf", "x");
    entry.method = 12;
    return buildArchive({entry});
}

// A file of one package, resumed with the end of another of the same length.
QByteArray ofTwoVersions()
{
    constexpr qsizetype size = 5000;
    const QByteArray first = buildArchive({storedEntry("main.wf", QByteArray(size, 'a'))});
    const QByteArray second = buildArchive({storedEntry("main.wf", QByteArray(size, 'b'))});
    return first.first(size / 2) + second.sliced(size / 2);
}

std::vector<BadPackage> badPackages()
{
    const QByteArray good = packageOf({{u"main.wf"_s, "x"}, {u"picture"_s, "y"}});
    return {{"an HTML page", "<html><body>Not found</body></html>", InstallFault::NoPackage},
        {"nothing at all", "", InstallFault::NoPackage},
        {"gzip", QByteArray::fromHex("1f8b0800000000000003") + good, InstallFault::NoPackage},
        {"cut", good.first(good.size() - 30), InstallFault::NoPackage},
        {"without entries", buildArchive({}), InstallFault::Empty},
        {"a wrong checksum", withBadChecksum(), InstallFault::Damaged},
        {"an encrypted file", encrypted(), InstallFault::Unreadable},
        {"an unknown method", withUnknownMethod(), InstallFault::Unreadable},
        {"a way out", buildArchive({storedEntry("main.wf", "x"), storedEntry("../out", "x")}),
            InstallFault::Misplaced},
        {"two versions in one", ofTwoVersions(), InstallFault::Damaged},
        {"a later edition", packageOf({{u"main.wf"_s, "//edition:3\n"}}), InstallFault::LaterEdition},
        {"a later edition behind the guide", packageOf({{u"main.wf"_s, "//guide:x\r\n//edition:77\r\n"}}),
            InstallFault::LaterEdition},
        {"a part of a later edition",
            packageOf({{u"main.wf"_s, "//edition:2\n"}, {u"parts/more.wf"_s, "//edition:3\n"}}),
            InstallFault::LaterEdition}};
}

} // namespace

TEST_F(PackageInstallerTest, aPackageBecomesAnApp)
{
    EXPECT_TRUE(install(
        buildArchive({storedEntry("main.wf", "os.tips \"1\"\r\n"), deflatedEntry("pictures/a", "aaaa")})));
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "os.tips \"1\"\r\n");
    EXPECT_EQ(bytesOf(folder.apps(u"calc/pictures/a"_s)), "aaaa");
    EXPECT_EQ(listed, QStringList(u"calc"_s));
    EXPECT_TRUE(QFile::exists(folder.path() + u"/downloads/calc.wfp"_s));
    EXPECT_TRUE(nothingIsLeft());
}

TEST_F(PackageInstallerTest, whatIsNotWholeIsNeitherInstalledNorListed)
{
    for (const BadPackage &bad : badPackages()) {
        EXPECT_EQ(install(bad.bytes).fault, bad.fault) << bad.what;
        EXPECT_EQ(folder.inApps(), QStringList()) << bad.what;
        EXPECT_TRUE(listed.isEmpty()) << bad.what;
        EXPECT_TRUE(nothingIsLeft()) << bad.what;
    }
}

TEST_F(PackageInstallerTest, aFailureLeavesTheAppThatIsThere)
{
    folder.addApp(u"calc"_s, "mine");
    for (const BadPackage &bad : badPackages()) {
        EXPECT_FALSE(install(bad.bytes)) << bad.what;
        EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "mine") << bad.what;
        EXPECT_FALSE(replace(bad.bytes)) << bad.what;
        EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "mine") << bad.what;
    }
    EXPECT_TRUE(log.lines().isEmpty());
    EXPECT_TRUE(nothingIsLeft());
}

TEST_F(PackageInstallerTest, everyFailureIsErrorAndASentence)
{
    for (const BadPackage &bad : badPackages()) {
        const QString message = install(bad.bytes).message();
        EXPECT_TRUE(message.startsWith(u"Error\n\n"_s) && message.endsWith(u'.')) << qPrintable(message);
    }
}

TEST_F(PackageInstallerTest, aScriptOfTheLastEditionIsNoFault)
{
    EXPECT_TRUE(
        install(packageOf({{u"main.wf"_s, "//edition:2\nset.a 1\n"}, {u"notes.txt"_s, "//edition:3"}})));
}

TEST_F(PackageInstallerTest, anInvalidSignatureAloneIsNoFault)
{
    BuiltEntry entry = storedEntry("main.wf", "intact");
    entry.localSignature = 0x12345678;
    EXPECT_TRUE(install(buildArchive({entry})));
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "intact");
}

TEST_F(PackageInstallerTest, aFullDiskLeavesNoHalfApp)
{
    const QByteArray package = packageOf({{u"main.wf"_s, "x"}, {u"picture"_s, QByteArray(500'000, 'x')}});
    put(package);
    {
        const test::FileSizeLimit limit(100'000);
        const InstallResult result = installer.install(
            {.path = folder.path() + u"/downloads/calc.wfp"_s, .keyword = u"calc"_s}, [](const QString &) {});
        EXPECT_EQ(result.fault, InstallFault::NoRoom);
    }
    EXPECT_EQ(folder.inApps(), QStringList());
    EXPECT_TRUE(nothingIsLeft());
    EXPECT_TRUE(install(package));
}

TEST_F(PackageInstallerTest, aMissingPackageSaysSo)
{
    EXPECT_EQ(installer.install({.path = u"/none.wfp"_s, .keyword = u"calc"_s}, [](const QString &) {}).fault,
        InstallFault::Missing);
}

TEST_F(PackageInstallerTest, installingOverAnAppReplacesItsFilesAndKeepsTheOthers)
{
    folder.addApp(u"calc"_s, "old");
    writeBytes(folder.apps(u"calc/mine"_s), "kept");
    EXPECT_TRUE(install(packageOf({{u"main.wf"_s, "new"}})));
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "new");
    EXPECT_EQ(bytesOf(folder.apps(u"calc/mine"_s)), "kept");
    EXPECT_EQ(log.lines(), QStringList(u"trash calc"_s));
    EXPECT_EQ(trash.read(u"calc/main.wf"_s), "old");
    EXPECT_EQ(trash.read(u"calc/mine"_s), "kept");
}

TEST_F(PackageInstallerTest, anUpdateKeepsWhatTheUsersScriptWrote)
{
    ASSERT_TRUE(install(packageOf({{u"main.wf"_s, "1"}, {u"gone"_s, "x"}, {u"log"_s, "empty"},
        {u"parts/a"_s, "x"}, {u"parts/old"_s, "x"}})));
    writeBytes(folder.apps(u"calc/notes.txt"_s), "written by the script");
    writeBytes(folder.apps(u"calc/log"_s), "written into a file of the package");
    writeBytes(folder.apps(u"calc/parts/mine"_s), "mine");

    EXPECT_TRUE(replace(packageOf({{u"main.wf"_s, "2"}, {u"parts/a"_s, "y"}})));
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "2");
    EXPECT_EQ(bytesOf(folder.apps(u"calc/notes.txt"_s)), "written by the script");
    EXPECT_EQ(bytesOf(folder.apps(u"calc/log"_s)), "written into a file of the package");
    EXPECT_EQ(bytesOf(folder.apps(u"calc/parts/mine"_s)), "mine");
    EXPECT_EQ(bytesOf(folder.apps(u"calc/parts/a"_s)), "y");
    EXPECT_FALSE(QFile::exists(folder.apps(u"calc/gone"_s)));
    EXPECT_FALSE(QFile::exists(folder.apps(u"calc/parts/old"_s)));
    EXPECT_EQ(log.lines(), QStringList(u"trash calc"_s));
    EXPECT_EQ(trash.read(u"calc/gone"_s), "x");
}

TEST_F(PackageInstallerTest, whereNothingWasRecordedEveryFileIsTheUsers)
{
    folder.addApp(u"calc"_s, "by hand");
    writeBytes(folder.apps(u"calc/old"_s), "kept");
    ASSERT_TRUE(QDir().mkpath(folder.apps(u"calc/empty"_s)));
    EXPECT_TRUE(replace(packageOf({{u"main.wf"_s, "2"}})));
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "2");
    EXPECT_EQ(bytesOf(folder.apps(u"calc/old"_s)), "kept");
    EXPECT_TRUE(QFile::exists(folder.apps(u"calc/empty"_s)));
    EXPECT_EQ(trash.read(u"calc/main.wf"_s), "by hand");
}

TEST_F(PackageInstallerTest, aNameInOtherLettersIsTheSameName)
{
    folder.addApp(u"calc"_s, "old");
    writeBytes(folder.apps(u"calc/Data/mine"_s), "mine");
    writeBytes(folder.apps(u"calc/ICON.png"_s), "old");
    EXPECT_TRUE(install(packageOf({{u"main.wf"_s, "2"}, {u"data/a"_s, "a"}, {u"icon.png"_s, "new"}})));
    EXPECT_EQ(bytesOf(folder.apps(u"calc/data/mine"_s)), "mine");
    EXPECT_EQ(QDir(folder.apps(u"calc"_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
        QStringList({u"data"_s, u"icon.png"_s, u"main.wf"_s}));
}

TEST_F(PackageInstallerTest, aRenamedAppIsStillKnown)
{
    ASSERT_TRUE(install(packageOf({{u"main.wf"_s, "1"}, {u"gone"_s, "x"}})));
    ASSERT_TRUE(appLibrary.RenameApp(u"calc"_s, u"other"_s));
    ASSERT_TRUE(appLibrary.RenameApp(u"other"_s, u"calc"_s));
    EXPECT_TRUE(replace(packageOf({{u"main.wf"_s, "2"}})));
    EXPECT_FALSE(QFile::exists(folder.apps(u"calc/gone"_s)));
}

TEST_F(PackageInstallerTest, linksArePutIntoTheNewVersionAndPipesAreNotWaitedFor)
{
    folder.addApp(u"calc"_s, "old");
    QFile::link(folder.path() + u"/elsewhere"_s, folder.apps(u"calc/link"_s));
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.apps(u"calc/pipe"_s)).constData(), 0600), 0);
    EXPECT_TRUE(install(packageOf({{u"main.wf"_s, "2"}})));
    EXPECT_EQ(QFile::symLinkTarget(folder.apps(u"calc/link"_s)), folder.path() + u"/elsewhere"_s);
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "2");
}

TEST_F(PackageInstallerTest, anAppThatIsAsideComesBackAndItsNameIsTaken)
{
    folder.addApp(u"calc"_s, "mine");
    ASSERT_TRUE(installer.setAside(u"calc"_s));
    EXPECT_TRUE(appLibrary.exists(u"calc"_s));
    EXPECT_FALSE(appLibrary.CreateApp(u"calc"_s, u"other"_s));
    EXPECT_EQ(folder.inApps(), QStringList());
    installer.putBack();
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "mine");
    EXPECT_TRUE(nothingIsLeft());
}

TEST_F(PackageInstallerTest, aFolderInTheOldAppsPlaceIsNeverOverwritten)
{
    folder.addApp(u"calc"_s, "mine");
    ASSERT_TRUE(installer.setAside(u"calc"_s));
    folder.addApp(u"calc"_s, "made by another program");
    EXPECT_EQ(install(packageOf({{u"main.wf"_s, "2"}})).fault, InstallFault::NotWritable);
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "made by another program");
    // The old one waits until there is room for it.
    ASSERT_TRUE(QDir(folder.apps(u"calc"_s)).removeRecursively());
    LibraryChange::recover(installer.changeNeeds());
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "mine");
}

TEST_F(PackageInstallerTest, theDesktopsTrashTakesAnAppAsAWhole)
{
    const recording::ProgramFolder home;
    const QByteArray homeBefore = qgetenv("HOME");
    const QByteArray dataBefore = qgetenv("XDG_DATA_HOME");
    qputenv("HOME", QFile::encodeName(home.path()));
    qunsetenv("XDG_DATA_HOME");
    ASSERT_TRUE(QDir().mkpath(home.path() + u"/.local/share"_s));
    folder.addApp(u"calc"_s, "mine");
    writeBytes(folder.apps(u"calc/deep/notes.txt"_s), "mine too");
    const bool isMoved = moveToTrash(folder.apps(u"calc"_s));
    qputenv("HOME", homeBefore);
    if (!dataBefore.isNull())
        qputenv("XDG_DATA_HOME", dataBefore);
    EXPECT_TRUE(isMoved);
    EXPECT_EQ(folder.inApps(), QStringList());
    EXPECT_EQ(bytesOf(home.path() + u"/.local/share/Trash/files/calc/deep/notes.txt"_s), "mine too");
}

class StoreVersions : public PackageInstallerTest
{
protected:
    static PackageOrigin origin(const QString &version)
    {
        return {
            .path = u"calc.wfp"_s, .version = version, .checksum = version.toUtf8().leftJustified(32, 'x')};
    }

    // A version of the store's, as an update brings it.
    InstallResult installVersion(const QString &version, const QString &keyword = u"calc"_s)
    {
        return installer.install({.path = put(packageOf({{u"main.wf"_s, version.toUtf8()}})),
                                     .keyword = keyword,
                                     .carried = CarriedFiles::UsersOwn,
                                     .origin = origin(version)},
            [](const QString &) {});
    }

    QString before(const QString &keyword = u"calc"_s) const
    {
        const auto version = installer.versionBefore(keyword);
        return version ? version->version : QString();
    }

    QByteArray script(const QString &keyword = u"calc"_s) const { return bytesOf(folder.script(keyword)); }

    QStringList records() const
    {
        return QDir(folder.path() + u"/config/load/packages"_s).entryList(QDir::Files);
    }
};

TEST_F(StoreVersions, theOneBeforeCanBeHadBackAndTheOneAfterToo)
{
    EXPECT_TRUE(installVersion(u"1.2"_s));
    EXPECT_EQ(before(), QString());
    EXPECT_FALSE(installer.goBack(u"calc"_s, [](const QString &) {}));
    writeBytes(folder.apps(u"calc/notes.txt"_s), "mine");
    EXPECT_TRUE(installVersion(u"1.3"_s));
    EXPECT_EQ(before(), u"1.2"_s);

    EXPECT_TRUE(installer.goBack(u"calc"_s, [this](const QString &keyword) { listed += keyword; }));
    EXPECT_EQ(listed, QStringList(u"calc"_s));
    EXPECT_EQ(script(), "1.2");
    EXPECT_EQ(before(), u"1.3"_s);
    EXPECT_EQ(bytesOf(folder.apps(u"calc/notes.txt"_s)), "mine");
    EXPECT_TRUE(installer.goBack(u"calc"_s, [](const QString &) {}));
    EXPECT_EQ(script(), "1.3");
    EXPECT_EQ(before(), u"1.2"_s);
}

TEST_F(StoreVersions, theSameOneAgainChangesNothingAboutTheOneBefore)
{
    EXPECT_TRUE(installVersion(u"1"_s));
    EXPECT_TRUE(installVersion(u"2"_s));
    EXPECT_TRUE(installVersion(u"2"_s));
    EXPECT_EQ(before(), u"1"_s);
    EXPECT_TRUE(installer.goBack(u"calc"_s, [](const QString &) {}));
    EXPECT_EQ(script(), "1");
}

TEST_F(StoreVersions, goWithTheKeywordOfTheApp)
{
    EXPECT_TRUE(installVersion(u"1"_s));
    EXPECT_TRUE(installVersion(u"2"_s));
    EXPECT_EQ(records().size(), 3);
    EXPECT_TRUE(appLibrary.RenameApp(u"calc"_s, u"sums"_s));
    EXPECT_EQ(before(), QString());
    EXPECT_EQ(before(u"sums"_s), u"1"_s);
    EXPECT_EQ(records().size(), 3);
    EXPECT_TRUE(installer.goBack(u"sums"_s, [](const QString &) {}));
    EXPECT_EQ(script(u"sums"_s), "1");
    EXPECT_TRUE(appLibrary.DeleteApp(u"sums"_s));
    EXPECT_EQ(records(), QStringList());
}

TEST_F(StoreVersions, areForgottenWithAPackageFromElsewhere)
{
    EXPECT_TRUE(installVersion(u"1"_s));
    EXPECT_TRUE(installVersion(u"2"_s));
    EXPECT_TRUE(install(packageOf({{u"main.wf"_s, "dropped"}})));
    EXPECT_EQ(before(), QString());
    EXPECT_EQ(records().size(), 1);
    EXPECT_FALSE(PackageRecord::of(u"calc"_s, folders).origin);
}

TEST_F(StoreVersions, withoutAKeptPackageThereIsNoWayBack)
{
    EXPECT_TRUE(installVersion(u"1"_s));
    EXPECT_TRUE(installVersion(u"2"_s));
    ASSERT_TRUE(QFile::remove(folders.onDisk(PackageRecord::packageBefore(u"calc"_s, folders))));
    EXPECT_EQ(before(), QString());
    EXPECT_EQ(installer.goBack(u"calc"_s, [](const QString &) {}).fault, InstallFault::Missing);
    EXPECT_EQ(script(), "2");
}

TEST_F(PackageInstallerTest, anAppKeepsTheSpellingOfItsFolder)
{
    folder.addApp(u"Calc"_s, "old");
    EXPECT_TRUE(install(packageOf({{u"main.wf"_s, "2"}})));
    EXPECT_EQ(folder.inApps(), QStringList(u"Calc"_s));
    EXPECT_EQ(listed, QStringList(u"Calc"_s));
}

} // namespace plum
