// Apps of a signed store and its newer versions: when the store is asked, what is installed without a
// question, and what a version that was taken back comes to. The store's real files, transfers and logic; the
// clock is the test's.

#include "store/store_updates.h"

#include "modules/store/qt_store_transfers.h"
#include "store/store_bench.h"
#include "support/mirror.h"
#include "support/signed_shop.h"
#include "support/wait_until.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::test::Mirror;
using plum::test::SignedShop;
using plum::test::waitUntil;

namespace {

const QByteArray seesNothing = R"({"see":["clipboard"]})";
const QByteArray seesMore = R"({"network":["host:example.org"],"see":["clipboard"]})";

class StoreUpdatesTest : public testing::Test
{
protected:
    StoreUpdatesTest()
    {
        platform.paths().folder = program.folder();
        QDir::setCurrent(program.folder());
        QObject::connect(&updates, &StoreUpdates::installed, [this](int apps) { installed += apps; });
        put(u"notes"_s, "//notes 1", u"1"_s, seesNothing);
        put(u"chess"_s, "//chess 1", u"1"_s, seesNothing);
        publish();
    }
    ~StoreUpdatesTest() override { QDir::setCurrent(QDir::rootPath()); }

    void put(const QString &name, const QByteArray &script, const QString &version, const QByteArray &sheet)
    {
        shop.put(name, script, version);
        shop.index.packages.back().sheet = sheet;
    }

    void publish()
    {
        shop.publish();
        mirror.files = shop.files;
        mirror.requests.clear();
    }

    // A person installs an app.
    void install(const QString &name)
    {
        store.askInstall(InstallFlag::ByName, name);
        ASSERT_TRUE(waitUntil([&] { return static_cast<bool>(host.agree); }));
        bool isOver = false;
        host.onMessage = [&] { isOver = true; };
        std::exchange(host.agree, {})();
        ASSERT_TRUE(waitUntil([&] { return isOver; }));
        host.onMessage = {};
        mirror.requests.clear();
    }

    // Lets the store be asked if it is time, and waits for what comes of it.
    bool isAsked()
    {
        mirror.requests.clear();
        updates.askWhenDue();
        if (!store.isBusy())
            return false;
        EXPECT_TRUE(waitUntil([&] { return !store.isBusy(); }));
        return mirror.requests.contains(timestampFileName());
    }

    QStringList pending() const
    {
        QStringList names;
        for (const StoreUpdate &update : updates.pending())
            names += update.keyword + u' ' + update.newest.version;
        return names;
    }

    QByteArray script(const QString &app) const { return program.read(u"config/apps/%1/main.wf"_s.arg(app)); }

    test::TemporaryFiles program;
    SignedShop shop;
    Mirror mirror;
    recording::RecordingPlatform platform;
    test::RecordingView view{platform.log};
    QtStoreTransfers transfers{platform.paths(), platform.textCodec()};
    test::RecordingHost host{platform.log};
    ClipboardChannel channel{platform.clipboard()};
    AppFolders folders{platform.paths()};
    AppListFile listFile{platform.paths(), platform.textCodec()};
    PackageInstaller installer{
        {platform.paths(), platform.textCodec(), {folders, listFile, [](const QString &) { return false; }}}};
    const StoreAddresses addresses{QUrl(u"http://127.0.0.1"_s), mirror.base(), {shop.rootKey.publicKey()}};
    webbox store{{view, transfers, channel, host, platform.shell(), platform.paths(), installer, addresses,
        [this] { return updates.apps(); }}};
    bool idle = true;
    QDateTime now = QDateTime::currentDateTimeUtc();
    StoreUpdates updates{{.paths = platform.paths(),
        .codec = platform.textCodec(),
        .store = store,
        .addresses = addresses,
        .isIdle = [this] { return idle; },
        .ask = [this](const InstallOffer &offer,
                   std::function<void()> yes) { host.askInstall(offer, std::move(yes)); },
        .now = [this] { return now; }}};
    int installed = 0;
};

} // namespace

TEST_F(StoreUpdatesTest, TheStoreIsAskedOnceADayWhileNothingRuns)
{
    EXPECT_FALSE(isAsked()); // no app is from a store
    install(u"notes"_s);
    idle = false;
    EXPECT_FALSE(isAsked());
    idle = true;
    EXPECT_TRUE(isAsked());
    EXPECT_FALSE(isAsked());
    now = now.addSecs(23 * 60 * 60);
    EXPECT_FALSE(isAsked());
    now = now.addSecs(60 * 60);
    EXPECT_TRUE(isAsked());

    // A store that does not answer is not asked more often.
    now = now.addDays(1);
    mirror.files.clear();
    EXPECT_TRUE(isAsked());
    EXPECT_FALSE(isAsked());
}

TEST_F(StoreUpdatesTest, AreOffWhereTheOptionsSaySo)
{
    install(u"notes"_s);
    program.write(u"config/load/options.ini"_s, "[store]\r\nupdates=off\r\n");
    EXPECT_FALSE(isAsked());
    program.write(u"config/load/options.ini"_s, "[store]\r\nupdates=on\r\n");
    EXPECT_TRUE(isAsked());
}

TEST_F(StoreUpdatesTest, ANewVersionThatMayDoNoMoreIsInstalledWithoutAQuestion)
{
    install(u"notes"_s);
    install(u"chess"_s);
    program.write(u"config/apps/notes/mine.txt"_s, "mine");
    put(u"notes"_s, "//notes 2", u"2"_s, seesNothing);
    publish();
    EXPECT_TRUE(isAsked());
    EXPECT_EQ(pending(), QStringList(u"notes 2"_s));
    EXPECT_EQ(script(u"notes"_s), "//notes 1");

    platform.log.clear();
    updates.installAll();
    ASSERT_TRUE(waitUntil([&] { return installed == 1; }));
    EXPECT_FALSE(host.agree);
    EXPECT_FALSE(platform.log.lines().contains(u"add app notes"_s)); // it keeps its place in the lists
    EXPECT_EQ(script(u"notes"_s), "//notes 2");
    EXPECT_EQ(program.read(u"config/apps/notes/mine.txt"_s), "mine");
    EXPECT_EQ(script(u"chess"_s), "//chess 1");
    EXPECT_EQ(pending(), QStringList());

    // The version before is there, and whoever goes back to it is not asked to leave it again.
    EXPECT_EQ(installer.versionBefore(u"notes"_s)->version, u"1"_s);
    ASSERT_TRUE(installer.goBack(u"notes"_s, [](const QString &) {}));
    EXPECT_EQ(script(u"notes"_s), "//notes 1");
    now = now.addDays(1);
    EXPECT_TRUE(isAsked());
    EXPECT_EQ(pending(), QStringList());
    put(u"notes"_s, "//notes 3", u"3"_s, seesNothing);
    publish();
    now = now.addDays(1);
    EXPECT_TRUE(isAsked());
    EXPECT_EQ(pending(), QStringList(u"notes 3"_s));
}

TEST_F(StoreUpdatesTest, WhatAnyQuestionForTheIndexHasBroughtCounts)
{
    install(u"notes"_s);
    EXPECT_FALSE(updates.takenBack(u"notes"_s));
    put(u"notes"_s, "//notes 2", u"2"_s, seesNothing);
    shop.index.revoked.push_back({plum::test::sha256(SignedShop::packed("//notes 1")), {}});
    publish();
    install(u"chess"_s);
    EXPECT_EQ(pending(), QStringList(u"notes 2"_s));
    EXPECT_TRUE(updates.takenBack(u"notes"_s));
    install(u"notes"_s);
    EXPECT_EQ(pending(), QStringList());
    EXPECT_FALSE(updates.takenBack(u"notes"_s));
}

TEST_F(StoreUpdatesTest, OneThatMayDoMoreIsAskedAbout)
{
    install(u"notes"_s);
    install(u"chess"_s);
    put(u"notes"_s, "//notes 2", u"2"_s, seesMore);
    put(u"chess"_s, "//chess 2", u"2"_s, seesNothing);
    publish();
    updates.installAll();
    ASSERT_TRUE(waitUntil([&] { return host.agree && script(u"chess"_s) == "//chess 2"; }));
    EXPECT_EQ(script(u"notes"_s), "//notes 1");
    EXPECT_EQ(host.lastOffer.keyword, u"notes"_s);
    EXPECT_EQ(host.lastOffer.version, u"2"_s);
    EXPECT_TRUE(host.lastOffer.replaces);
    host.agree();
    EXPECT_TRUE(waitUntil([&] { return script(u"notes"_s) == "//notes 2"; }));

    // Nothing is known of it: it may be more.
    host.agree = {};
    put(u"notes"_s, "//notes 3", u"3"_s, {});
    publish();
    updates.installAll();
    EXPECT_TRUE(waitUntil([&] { return static_cast<bool>(host.agree); }));
    EXPECT_EQ(script(u"notes"_s), "//notes 2");
}

TEST_F(StoreUpdatesTest, AVersionForANewerPlumIsNotOffered)
{
    install(u"notes"_s);
    put(u"notes"_s, "//notes 2", u"2"_s, seesNothing);
    shop.index.packages.back().edition = 99;
    publish();
    EXPECT_TRUE(isAsked());
    EXPECT_EQ(pending(), QStringList());
}

TEST_F(StoreUpdatesTest, AMirrorThatSwapsTheUpdateLeavesTheOldVersion)
{
    install(u"notes"_s);
    put(u"notes"_s, "//notes 2", u"2"_s, seesNothing);
    publish();
    mirror.files.insert(u"notes.wfp"_s, SignedShop::packed("//notes x"));
    QString said;
    host.onMessage = [&] { said = platform.log.lines().last(); };
    updates.installAll();
    ASSERT_TRUE(waitUntil([&] { return !said.isEmpty(); }));
    EXPECT_TRUE(said.contains(indexFaultText(IndexFault::WrongChecksum))) << qPrintable(said);
    EXPECT_EQ(script(u"notes"_s), "//notes 1");
    EXPECT_EQ(pending(), QStringList(u"notes 2"_s));
    EXPECT_EQ(installed, 0);
}

TEST_F(StoreUpdatesTest, AVersionThatWasTakenBackSaysSoUntilTheUserInsists)
{
    install(u"notes"_s);
    EXPECT_FALSE(updates.takenBack(u"notes"_s));
    shop.index.revoked.push_back({shop.index.newest(u"notes"_s)->checksum, u"It writes too much."_s});
    publish();
    EXPECT_TRUE(isAsked());
    EXPECT_EQ(updates.takenBack(u"notes"_s), u"It writes too much."_s);
    EXPECT_FALSE(updates.takenBack(u"chess"_s));
    EXPECT_EQ(pending(), QStringList());

    // The next start of the program knows it without asking anybody.
    StoreUpdates later{{.paths = platform.paths(),
        .codec = platform.textCodec(),
        .store = store,
        .addresses = addresses,
        .isIdle = [] { return false; },
        .ask = {}}};
    EXPECT_EQ(later.takenBack(u"notes"_s), u"It writes too much."_s);
    later.insist(u"notes"_s);
    EXPECT_FALSE(later.takenBack(u"notes"_s));
    EXPECT_FALSE(updates.takenBack(u"notes"_s));

    // It was one version that the user insisted on.
    put(u"notes"_s, "//notes 2", u"2"_s, seesNothing);
    publish();
    updates.installAll();
    ASSERT_TRUE(waitUntil([&] { return installed == 1; }));
    EXPECT_FALSE(updates.takenBack(u"notes"_s));
    shop.index.revoked.push_back({shop.index.newest(u"notes"_s)->checksum, {}});
    publish();
    now = now.addDays(1);
    EXPECT_TRUE(isAsked());
    EXPECT_EQ(updates.takenBack(u"notes"_s), QString());
}

TEST_F(StoreUpdatesTest, AppsOfTheStoreAreOfferedAnewAndInTheirNewestVersion)
{
    install(u"notes"_s);
    program.write(u"config/apps/mine/main.wf"_s, "//my own");
    EXPECT_EQ(updates.apps(),
        (std::vector<StoreApp>{{.keyword = u"notes"_s, .version = u"1"_s, .path = u"notes.wfp"_s}}));
    put(u"notes"_s, "//notes 2", u"2"_s, seesNothing);
    publish();
    ASSERT_TRUE(isAsked());
    ASSERT_EQ(updates.apps().size(), 1U);
    EXPECT_EQ(updates.apps().front().newest, u"2"_s);

    store.askAnew(u"notes"_s);
    ASSERT_TRUE(waitUntil([&] { return static_cast<bool>(host.agree); }));
    EXPECT_EQ(host.lastOffer.version, u"2"_s);
    EXPECT_TRUE(host.lastOffer.replaces);
    std::exchange(host.agree, {})();
    ASSERT_TRUE(waitUntil([&] { return script(u"notes"_s) == "//notes 2" && !store.isBusy(); }));
    EXPECT_EQ(view.apps,
        (std::vector<StoreApp>{{.keyword = u"notes"_s, .version = u"2"_s, .path = u"notes.wfp"_s}}));
}

TEST_F(StoreUpdatesTest, ARetryAsksOnlyWhereTheIndexNamesAnotherPackage)
{
    const QByteArray package = mirror.files.take(u"notes.wfp"_s);
    store.askInstall(InstallFlag::ByName, u"notes"_s);
    ASSERT_TRUE(waitUntil([&] { return static_cast<bool>(host.agree); }));
    std::exchange(host.agree, {})();
    ASSERT_TRUE(waitUntil([&] { return view.failed == "notes"_L1; }));

    mirror.files[u"notes.wfp"_s] = package + "cut off";
    store.retry();
    ASSERT_TRUE(waitUntil([&] { return view.failed == "notes"_L1 && !store.isBusy(); }));
    EXPECT_FALSE(host.agree);

    put(u"notes"_s, "//notes 2", u"2"_s, seesMore);
    publish();
    store.retry();
    ASSERT_TRUE(waitUntil([&] { return static_cast<bool>(host.agree); }));
    EXPECT_EQ(host.lastOffer.version, u"2"_s);
    std::exchange(host.agree, {})();
    ASSERT_TRUE(waitUntil([&] { return script(u"notes"_s) == "//notes 2"; }));
}
