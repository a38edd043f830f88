#include "library/library_adoption.h"

#include "library/grant_file.h"
#include "library/library_bench.h"
#include "library/package_record.h"

#include <QDirIterator>
#include <QMap>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::writeBytes;

namespace {

class LibraryAdoptionTest : public testing::Test, protected recording::LibraryBench
{
protected:
    LibraryAdoption::Outcome adopt()
    {
        const auto outcome
            = LibraryAdoption({paths, codec, {folders, listFile, trash.asTrash()}}).adopt(other.path());
        EXPECT_TRUE(outcome);
        return outcome.value_or(LibraryAdoption::Outcome{});
    }

    // Every file below a folder with its content.
    static QMap<QString, QByteArray> picture(const QString &folder)
    {
        QMap<QString, QByteArray> files;
        QDirIterator below(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (below.hasNext()) {
            const QString file = below.next();
            files.insert(QDir(folder).relativeFilePath(file), bytesOf(file));
        }
        return files;
    }

    recording::ProgramFolder other; // the portable one
};

} // namespace

TEST_F(LibraryAdoptionTest, appsComeInTheirOrderBehindThoseThatAreHere)
{
    folder.addApp(u"mine"_s);
    writeBytes(folder.configTxt(), "mine\r\n");
    other.addApp(u"a"_s, "one");
    other.addApp(u"b"_s, "two");
    other.addApp(u"unlisted"_s, "three");
    writeBytes(other.apps(u"b/data/.hidden"_s), "x");
    writeBytes(other.configTxt(), "b\r\ngone\r\na\r\n");
    EXPECT_EQ(adopt().apps, QStringList({u"b"_s, u"a"_s, u"unlisted"_s}));
    EXPECT_EQ(bytesOf(folder.configTxt()), "mine\r\nb\r\na\r\nunlisted\r\n");
    EXPECT_EQ(bytesOf(folder.script(u"b"_s)), "two");
    EXPECT_EQ(bytesOf(folder.apps(u"b/data/.hidden"_s)), "x");
}

TEST_F(LibraryAdoptionTest, nothingThatIsHereIsReplaced)
{
    folder.addApp(u"a"_s, "mine");
    folder.addApp(u"a-2"_s, "mine too");
    writeBytes(folder.setIni(), "[hotkey]\r\nhotkey=Alt+Z\r\n");
    const auto before = picture(folder.path());
    other.addApp(u"a"_s, "theirs");
    writeBytes(other.setIni(), "[hotkey]\r\nhotkey=Ctrl+Q\r\n");
    const LibraryAdoption::Outcome outcome = adopt();
    EXPECT_EQ(outcome.apps, QStringList(u"a as a-3"_s));
    EXPECT_EQ(outcome.keptSettings, QStringList(u"set.ini"_s));
    EXPECT_EQ(bytesOf(folder.script(u"a-3"_s)), "theirs");
    const auto after = picture(folder.path());
    for (const auto &[name, content] : before.asKeyValueRange())
        EXPECT_EQ(after.value(name), content) << name.toStdString();
}

TEST_F(LibraryAdoptionTest, theOtherFolderStaysAsItIs)
{
    other.addApp(u"a"_s);
    writeBytes(other.configTxt(), "a\r\n");
    writeBytes(other.setIni(), "[hotkey]\r\nhotkey=Ctrl+Q\r\n");
    const auto before = picture(other.path());
    EXPECT_EQ(adopt().settings, QStringList(u"set.ini"_s));
    EXPECT_EQ(bytesOf(folder.setIni()), "[hotkey]\r\nhotkey=Ctrl+Q\r\n");
    EXPECT_EQ(picture(other.path()), before);
}

TEST_F(LibraryAdoptionTest, aSecondTimeEverythingIsThere)
{
    other.addApp(u"a"_s, "one");
    EXPECT_EQ(adopt().apps, QStringList(u"a"_s));
    const auto before = picture(folder.path());
    const LibraryAdoption::Outcome outcome = adopt();
    EXPECT_TRUE(outcome.apps.isEmpty());
    EXPECT_EQ(outcome.present, QStringList(u"a"_s));
    EXPECT_EQ(picture(folder.path()), before);
}

// An app without a grant is the user's own, and nothing limits it.
TEST_F(LibraryAdoptionTest, whatAnAppWasGrantedComesWithItAlsoUnderAnotherKeyword)
{
    folder.addApp(u"a"_s, "mine");
    other.addApp(u"a"_s, "theirs");
    const std::unique_ptr<Platform> system = createPlatform(other.path() + u"/plum"_s);
    const AppFolders theirFolders(system->paths());
    ASSERT_TRUE(
        GrantFile(system->paths())
            .set(u"a"_s, {.contentHash = "hash", .sheet = R"({"effects":[]})", .isTakenBack = false}));
    const PackageRecord record{
        .files = {{u"main.wf"_s, {6, 42}}}, .folders = {}, .origin = PackageOrigin{.path = u"a.wfp"_s}};
    writeBytes(PackageRecord::fileOf(u"a"_s, theirFolders), record.toJson());
    writeBytes(theirFolders.onDisk(PackageRecord::packageOf(u"a"_s, theirFolders)), "PK");

    EXPECT_EQ(adopt().apps, QStringList(u"a as a-2"_s));
    EXPECT_FALSE(GrantFile(paths).of(u"a"_s));
    const auto grant = GrantFile(paths).of(u"a-2"_s);
    ASSERT_TRUE(grant);
    EXPECT_EQ(grant->contentHash, "hash");
    EXPECT_EQ(PackageRecord::of(u"a-2"_s, folders).origin, record.origin);
    EXPECT_EQ(bytesOf(folders.onDisk(PackageRecord::packageOf(u"a-2"_s, folders))), "PK");
    EXPECT_FALSE(PackageRecord::of(u"a"_s, folders).origin);
}

TEST_F(LibraryAdoptionTest, onlyAnotherProgramFolderIsTakenOver)
{
    folder.addApp(u"a"_s);
    const LibraryAdoption adoption({paths, codec, {folders, listFile, trash.asTrash()}});
    EXPECT_FALSE(adoption.adopt(folder.path()));
    EXPECT_FALSE(adoption.adopt(folder.path() + u"/config"_s));
    EXPECT_FALSE(adoption.adopt(u"/nowhere"_s));
}

} // namespace plum
