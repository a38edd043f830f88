// From the installation of an app to its runs: what it was granted, when the user is asked again, and what
// becomes the user's own.
#include "grants/app_grants.h"
#include "guard/granted_limit.h"
#include "library/library_bench.h"
#include "recording/script_bench.h"
#include "sheet/sheet_json.h"

#include <QJsonDocument>
#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

class AppGrantsTest : public testing::Test
{
protected:
    AppGrantsTest() { QDir::setCurrent(bench.folder.path()); }

    // Installs a package with this script as an app, and other files of it.
    void install(const QByteArray &script, const QMap<QString, QByteArray> &others = {})
    {
        ASSERT_TRUE(installer.install(
            {.path = package(script, others), .keyword = u"shy"_s}, [](const QString &) {}));
    }

    QString package(const QByteArray &script, const QMap<QString, QByteArray> &others = {})
    {
        ZipWriter zip;
        const QDateTime now = QDateTime::currentDateTime();
        zip.add(u"main.wf"_s, script, now);
        for (auto each = others.begin(); each != others.end(); ++each)
            zip.add(each.key(), each.value(), now);
        const QString path = bench.folder.path() + u"/shy.wfp"_s;
        recording::writeBytes(path, zip.finish());
        return path;
    }

    QString app(const QString &file) const { return bench.folder.path() + u"/config/apps/shy/"_s + file; }
    QString grantsFile() const { return bench.folder.path() + u"/config/load/grants.json"_s; }

    // The sheet that a run is held to, as JSON; "own" without a limit.
    std::string limit()
    {
        const auto limit = grants.limitOf(u"shy"_s, recording::bytesOf(app(u"main.wf"_s)));
        if (!limit)
            return "own";
        const Sheet &sheet = static_cast<const GrantedLimit &>(*limit).sheet;
        return QJsonDocument(toJson(sheet)).toJson(QJsonDocument::Compact).toStdString();
    }

    bool isAsked() { return grants.questionBefore(u"shy"_s).has_value(); }
    void agree() { grants.allow(u"shy"_s, grants.questionBefore(u"shy"_s)->grant); }

    recording::LibraryBench bench;
    recording::ScriptBench scripts;
    AppGrants grants{{bench.paths, bench.codec, [this] { return scripts.system.vocabulary(); }}};
    PackageInstaller installer{{.paths = bench.paths,
        .codec = bench.codec,
        .changes = {bench.folders, bench.listFile, bench.trash.asTrash()},
        .arrives
        = [this](const QString &keyword, const QString &folder) { return grants.arrive(keyword, folder); }}};
};

constexpr const char *lock = R"({"session":["lock"]})";

TEST_F(AppGrantsTest, anInstalledAppGetsWhatItsScriptSaysAndRunsWithoutAQuestion)
{
    install("os.lock_screen\r\n");
    EXPECT_EQ(limit(), lock);
    EXPECT_FALSE(isAsked());
}

TEST_F(AppGrantsTest, appsFromBeforeAndOfTheUserHaveNoLimit)
{
    recording::writeBytes(app(u"main.wf"_s), "os.lock_screen\r\n");
    EXPECT_EQ(limit(), "own");
    EXPECT_FALSE(isAsked());
    EXPECT_FALSE(grants.told(u"shy"_s).isLimited);
}

TEST_F(AppGrantsTest, aChangedScriptDoesNothingUntilItIsConfirmed)
{
    install("os.lock_screen\r\n");
    recording::writeBytes(app(u"main.wf"_s), "os.lock_screen\r\nos.shut_down\r\n");
    EXPECT_EQ(limit(), "{}");
    ASSERT_TRUE(isAsked());
    const auto question = grants.questionBefore(u"shy"_s);
    EXPECT_EQ(question->offer.asks, InstallOffer::Asks::RunChanged);
    EXPECT_EQ(question->offer.sheet, R"({"session":["lock","shut down"]})");
    EXPECT_EQ(question->offer.granted, lock);
    // Changed once more while the question was open: what was shown is what was agreed to.
    recording::writeBytes(app(u"main.wf"_s), "os.restart\r\n");
    grants.allow(u"shy"_s, question->grant);
    EXPECT_TRUE(isAsked());
    EXPECT_EQ(limit(), "{}");
    agree();
    EXPECT_FALSE(isAsked());
    EXPECT_EQ(limit(), R"({"session":["restart"]})");
}

TEST_F(AppGrantsTest, soDoesOneWhosePartsInOtherFilesChange)
{
    install("//edition:2\npart.use \"more.txt\"\npart.run go\n",
        {{u"more.txt"_s, "part.start go\nos.lock_screen\npart.end\n"}});
    EXPECT_EQ(limit(), lock);
    recording::writeBytes(app(u"more.txt"_s), "part.start go\nos.shut_down\npart.end\n");
    EXPECT_TRUE(isAsked());
    EXPECT_EQ(limit(), "{}");
}

TEST_F(AppGrantsTest, whatTheUserWritesInTheEditorIsTheUsersOwn)
{
    install("os.lock_screen\r\n");
    EXPECT_TRUE(bench.appLibrary.SaveApp(u"shy"_s, u"os.shut_down"_s));
    EXPECT_EQ(limit(), "own");
    EXPECT_FALSE(isAsked());
}

TEST_F(AppGrantsTest, theCopyThatIsNeverRunChangesNothing)
{
    install("os.lock_screen\r\n");
    bench.appLibrary.saveScript(u"shy"_s, u".main.wf"_s, {}, u"x"_s, ScriptFile::LineEnds::Kept);
    EXPECT_EQ(limit(), lock);
}

TEST_F(AppGrantsTest, goAlongWithTheKeywordAndGoWithTheApp)
{
    install("os.lock_screen\r\n");
    EXPECT_TRUE(bench.appLibrary.RenameApp(u"shy"_s, u"other"_s));
    EXPECT_TRUE(grants.told(u"other"_s).isLimited);
    EXPECT_TRUE(bench.appLibrary.RenameApp(u"other"_s, u"shy"_s));
    EXPECT_FALSE(grants.told(u"other"_s).isLimited);
    EXPECT_EQ(limit(), lock);
    EXPECT_TRUE(bench.appLibrary.DeleteApp(u"shy"_s));
    EXPECT_TRUE(bench.appLibrary.CreateApp(u"shy"_s, u"os.restart"_s));
    EXPECT_EQ(limit(), "own");
}

TEST_F(AppGrantsTest, canBeTakenBackAndGivenAgain)
{
    install("os.lock_screen\r\n");
    grants.takeBack(u"shy"_s);
    EXPECT_EQ(limit(), "{}");
    EXPECT_TRUE(grants.told(u"shy"_s).isTakenBack);
    ASSERT_TRUE(isAsked());
    EXPECT_EQ(grants.questionBefore(u"shy"_s)->offer.asks, InstallOffer::Asks::RunAgain);
    agree();
    EXPECT_EQ(limit(), lock);
}

TEST_F(AppGrantsTest, aPackageThatDoesMoreThanWasPromisedIsAskedAbout)
{
    grants.promise(u"shy"_s, R"({"session":["lock"]})");
    install("os.lock_screen\r\nos.shut_down\r\n");
    EXPECT_EQ(limit(), "{}");
    ASSERT_TRUE(isAsked());
    EXPECT_EQ(grants.questionBefore(u"shy"_s)->offer.granted, lock);
    grants.promise(u"shy"_s, R"({"session":["lock","shut down","restart"]})");
    install("os.lock_screen\r\n");
    EXPECT_FALSE(isAsked());
    EXPECT_EQ(limit(), lock);
}

TEST_F(AppGrantsTest, anUpdateThatNobodyWasAskedAboutGetsNoMoreThanBefore)
{
    install("os.lock_screen\r\nos.shut_down\r\n");
    install("os.lock_screen\r\n");
    EXPECT_FALSE(isAsked());
    EXPECT_EQ(limit(), lock);
    install("os.lock_screen\r\nos.restart\r\n");
    EXPECT_TRUE(isAsked());
    EXPECT_EQ(limit(), "{}");
    agree();
    grants.takeBack(u"shy"_s);
    install("os.lock_screen\r\n");
    EXPECT_EQ(limit(), "{}");
}

TEST_F(AppGrantsTest, aPackageIsLookedIntoBeforeItIsInstalled)
{
    EXPECT_EQ(grants.sheetOfPackage(package("//edition:2\npart.use \"more.txt\"\npart.run go\n",
                  {{u"more.txt"_s, "part.start go\nos.lock_screen\npart.end\n"}})),
        lock);
    recording::writeBytes(bench.folder.path() + u"/none.wfp"_s, "no package");
    EXPECT_EQ(grants.sheetOfPackage(bench.folder.path() + u"/none.wfp"_s), QByteArray());
}

// What is not known is not allowed.
TEST_F(AppGrantsTest, aDamagedFileTakesEverythingBack)
{
    install("os.lock_screen\r\n");
    bench.appLibrary.CreateApp(u"mine"_s, u"os.restart"_s);
    for (const QByteArray &damaged :
        {QByteArray("{"), QByteArray(), QByteArray("[]"), QByteArray(R"({"apps":1})")}) {
        recording::writeBytes(grantsFile(), damaged);
        EXPECT_EQ(limit(), "{}") << damaged.toStdString();
        EXPECT_TRUE(isAsked());
        EXPECT_FALSE(grants.told(u"mine"_s).isLimited);
    }
    // Another app's answer leaves it so.
    grants.allow(u"other"_s, {});
    EXPECT_EQ(limit(), "{}");
}

TEST_F(AppGrantsTest, aSheetThatIsNoneAllowsNothing)
{
    install("os.lock_screen\r\n");
    QByteArray content = recording::bytesOf(grantsFile());
    recording::writeBytes(grantsFile(), content.replace("session", "weather"));
    EXPECT_EQ(limit(), "{}");
}

TEST_F(AppGrantsTest, anInstallationThatFailsLeavesTheOldAppWithAQuestionAtMost)
{
    install("os.lock_screen\r\n");
    EXPECT_FALSE(installer.install(
        {.path = bench.folder.path() + u"/missing.wfp"_s, .keyword = u"shy"_s}, [](const QString &) {}));
    EXPECT_EQ(limit(), lock);
}

} // namespace
} // namespace plum
