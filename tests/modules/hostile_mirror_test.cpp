// A store's files on a mirror that tries to have something else installed than the store has published: the
// real transfers over HTTP, and the store's real logic behind them. Whatever it tries, there is no app, and a
// sentence.

#include "modules/store/qt_store_transfers.h"

#include "engine/editions/last_edition.h"
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

class HostileMirror : public testing::Test
{
protected:
    // One start of the program: what it remembers is in its folder.
    struct Launcher
    {
        Launcher(const Mirror &mirror, const PublicKey &key, const QString &folder)
            : addresses{QUrl(u"http://127.0.0.1"_s), mirror.base(), {key}}
        {
            platform.paths().folder = folder;
        }

        recording::RecordingPlatform platform;
        test::RecordingView view{platform.log};
        QtStoreTransfers transfers{platform.paths(), platform.textCodec()};
        test::RecordingHost host{platform.log};
        ClipboardChannel channel{platform.clipboard()};
        AppFolders folders{platform.paths()};
        AppListFile listFile{platform.paths(), platform.textCodec()};
        PackageInstaller installer{{platform.paths(), platform.textCodec(),
            {folders, listFile, [](const QString &) { return false; }}}};
        const StoreAddresses addresses;
        webbox store{
            {view, transfers, channel, host, platform.shell(), platform.paths(), installer, addresses}};
    };

    HostileMirror()
    {
        QDir::setCurrent(program.folder());
        shop.put(u"notes"_s, "//genuine");
        shop.publish();
        mirror.files = shop.files;
    }
    ~HostileMirror() override { QDir::setCurrent(QDir::rootPath()); }

    // A person wants a package and says yes if asked. Returns what was said in the end.
    QString install(const QString &name = u"notes"_s)
    {
        Launcher launcher(mirror, rootKey, program.folder());
        launcher.transfers.setIndexPatience(patience);
        QString said;
        launcher.host.onMessage = [&] { said = launcher.platform.log.lines().last(); };
        launcher.store.askInstall(InstallFlag::ByName, name);
        EXPECT_TRUE(waitUntil([&] { return !said.isEmpty() || launcher.host.agree; }));
        if (launcher.host.agree) {
            asked = launcher.host.lastOffer;
            launcher.host.agree();
            EXPECT_TRUE(waitUntil([&] { return !said.isEmpty(); }));
        }
        return said.remove(u"message "_s).remove(u" (system-modal)"_s).remove(u"Error\n\n"_s);
    }

    // No app, nothing of the package left, and this was said.
    void expectRefused(IndexFault fault, const QString &name = u"notes"_s)
    {
        EXPECT_EQ(install(name), indexFaultText(fault));
        expectNothing(name);
    }

    void expectNothing(const QString &name = u"notes"_s) const
    {
        EXPECT_FALSE(QFileInfo::exists(program.folder() + u"/config/apps/"_s + name));
        EXPECT_TRUE(QDir(program.folder()).entryList({u"*.wfp*"_s}).isEmpty());
    }

    void expectInstalled(const QByteArray &script, const QString &name = u"notes"_s)
    {
        EXPECT_EQ(install(name), u"installed successfully"_s);
        EXPECT_EQ(program.read(u"config/apps/%1/main.wf"_s.arg(name)), script);
        QDir(program.folder() + u"/config/apps"_s).removeRecursively();
    }

    test::TemporaryFiles program;
    SignedShop shop;
    const PublicKey rootKey = shop.rootKey.publicKey();
    Mirror mirror;
    InstallOffer asked;
    std::chrono::milliseconds patience{15000};
};

} // namespace

TEST_F(HostileMirror, ThatIsHonestIsUsed)
{
    expectInstalled("//genuine");
    EXPECT_EQ(asked.version, u"1"_s);
    EXPECT_EQ(asked.size, SignedShop::packed("//genuine").size());
    EXPECT_FALSE(asked.fromUnsignedStore);
    EXPECT_EQ(mirror.requests,
        (QStringList{u"signed/root-1.txt"_s, u"signed/root-2.txt"_s, u"signed/timestamp.txt"_s,
            u"signed/index-1.txt"_s, u"notes.wfp"_s}));

    // What is known already is not fetched again.
    mirror.requests.clear();
    expectInstalled("//genuine");
    EXPECT_EQ(
        mirror.requests, (QStringList{u"signed/root-2.txt"_s, u"signed/timestamp.txt"_s, u"notes.wfp"_s}));
}

TEST_F(HostileMirror, ThatShowsAPageForWhatIsMissingIsUsedAllTheSame)
{
    mirror.pageForMissing = "<!doctype html><title>Not found</title>";
    expectInstalled("//genuine");
}

TEST_F(HostileMirror, NothingOfThePackageIsRequestedBeforeThePersonAgrees)
{
    Launcher launcher(mirror, rootKey, program.folder());
    launcher.store.askInstall(InstallFlag::ByName, u"notes"_s);
    ASSERT_TRUE(waitUntil([&] { return static_cast<bool>(launcher.host.agree); }));
    EXPECT_FALSE(mirror.requests.contains(u"notes.wfp"_s));
}

TEST_F(HostileMirror, Rollback)
{
    const auto old = mirror.files;
    shop.put(u"notes"_s, "//newer", u"2"_s);
    shop.publish();
    mirror.files = shop.files;
    expectInstalled("//newer");

    mirror.files = old; // all of it, as it was signed
    expectRefused(IndexFault::Older);

    // Only the index: the timestamp is new, what it names is old.
    shop.timestampVersion = 10;
    shop.index.version = 1;
    shop.signTimestamp();
    mirror.files.insert(timestampFileName(), shop.files[timestampFileName()]);
    expectRefused(IndexFault::Older);
}

TEST_F(HostileMirror, Freeze)
{
    shop.signTimestamp(-1);
    mirror.files = shop.files;
    expectRefused(IndexFault::Expired);

    // A timestamp that goes on being signed for an index that has ended.
    shop.index.version = 2;
    shop.index.expires = SignedShop::in(-1);
    shop.signIndex();
    shop.signTimestamp();
    mirror.files = shop.files;
    expectRefused(IndexFault::Expired);

    shop.root.version = 2;
    shop.root.expires = SignedShop::in(-1);
    shop.signRoot({shop.rootKey});
    mirror.files = shop.files;
    expectRefused(IndexFault::RootExpired);
}

TEST_F(HostileMirror, MixAndMatch)
{
    const auto old = shop.files;
    shop.put(u"notes"_s, "//newer", u"2"_s);
    shop.publish();

    // The new timestamp with the old index, under the new one's name.
    mirror.files = shop.files;
    mirror.files.insert(indexFileName(2), old[indexFileName(1)]);
    expectRefused(IndexFault::Mixed);

    // The new index with the old package, which was good once.
    mirror.files = shop.files;
    mirror.files.insert(u"notes.wfp"_s, old[u"notes.wfp"_s]);
    expectRefused(old[u"notes.wfp"_s].size() == shop.files[u"notes.wfp"_s].size() ? IndexFault::WrongChecksum
                                                                                  : IndexFault::WrongSize);

    // Two indexes of one version, both signed.
    mirror.files = shop.files;
    expectInstalled("//newer");
    shop.put(u"notes"_s, "//another", u"2"_s);
    shop.signIndex();
    shop.signTimestamp();
    mirror.files = shop.files;
    expectRefused(IndexFault::Mixed);
}

TEST_F(HostileMirror, EndlessData)
{
    mirror.endless = {timestampFileName()};
    expectRefused(IndexFault::TooLarge);
    mirror.endless = {indexFileName(1)};
    expectRefused(IndexFault::Mixed);
    mirror.endless = {rootFileName(2)};
    expectRefused(IndexFault::TooLarge);

    // A package ends where it should, whatever the mirror sends on.
    mirror.endless = {u"notes.wfp"_s};
    expectRefused(IndexFault::WrongSize);
}

TEST_F(HostileMirror, EndlessWaiting)
{
    patience = std::chrono::milliseconds(300);
    for (const QString &file : {rootFileName(1), timestampFileName(), indexFileName(1)}) {
        mirror.silent = {file};
        expectRefused(IndexFault::NotThere);
    }
}

TEST_F(HostileMirror, EndlessTrickling)
{
    patience = std::chrono::milliseconds(300);
    for (const QString &file : {rootFileName(2), timestampFileName(), indexFileName(1)}) {
        mirror.trickling = {file};
        expectRefused(IndexFault::NotThere);
    }
}

TEST_F(HostileMirror, HasTheTimeForAllFilesTogether)
{
    patience = std::chrono::milliseconds(500);
    mirror.delay = 250; // for each of the root file that there is not, the timestamp and the index
    expectRefused(IndexFault::NotThere);
}

TEST_F(HostileMirror, WrongLength)
{
    mirror.files[u"notes.wfp"_s].chop(1);
    expectRefused(IndexFault::WrongSize);
    mirror.files[u"notes.wfp"_s].clear();
    expectRefused(IndexFault::WrongSize);
}

TEST_F(HostileMirror, SwappedPackage)
{
    QByteArray &package = mirror.files[u"notes.wfp"_s];
    package[package.size() / 2] = static_cast<char>(package[package.size() / 2] ^ 1);
    expectRefused(IndexFault::WrongChecksum);

    // One package of the store for another, both named in the index.
    shop.put(u"chess"_s, "//another");
    shop.publish();
    mirror.files = shop.files;
    mirror.files.insert(u"notes.wfp"_s, shop.files[u"chess.wfp"_s]);
    expectRefused(SignedShop::packed("//genuine").size() == SignedShop::packed("//another").size()
            ? IndexFault::WrongChecksum
            : IndexFault::WrongSize);
}

TEST_F(HostileMirror, PackageThatIsNotNamed)
{
    mirror.files.insert(u"other.wfp"_s, SignedShop::packed("//hostile"));
    expectRefused(IndexFault::NotNamed, u"other"_s);
    EXPECT_FALSE(mirror.requests.contains(u"other.wfp"_s));
}

TEST_F(HostileMirror, Unsigned)
{
    // Without signatures, with those of a key of the mirror's own, with a role's signature on another's file.
    const SecretKey own = SecretKey::make().value();
    const auto text = [&](const QString &name) { return SignedFile::parse(shop.files[name])->content; };

    for (const std::vector<SecretKey> &keys : {std::vector<SecretKey>{}, {own}, {shop.indexKey}}) {
        mirror.files.insert(timestampFileName(), signedBy(text(timestampFileName()), keys).toBytes());
        expectRefused(IndexFault::Unsigned);
    }
    mirror.files.insert(timestampFileName(), text(timestampFileName()));
    expectRefused(IndexFault::Unsigned);

    mirror.files = shop.files;
    shop.files[indexFileName(1)] = signedBy(text(indexFileName(1)), {own}).toBytes();
    shop.signTimestamp();
    mirror.files = shop.files;
    expectRefused(IndexFault::Unsigned);

    // No signed files at all: an index that nobody signed is not asked for.
    mirror.files
        = {{u"index.json"_s, shop.index.toJson()}, {u"notes.wfp"_s, SignedShop::packed("//hostile")}};
    mirror.requests.clear();
    expectRefused(IndexFault::NotThere);
    EXPECT_FALSE(mirror.requests.contains(u"index.json"_s));
}

TEST_F(HostileMirror, SomebodyElsesStore)
{
    SignedShop other;
    other.put(u"notes"_s, "//hostile");
    other.publish();
    mirror.files = other.files;
    expectRefused(IndexFault::NoRoot);
    mirror.files = shop.files;
    expectInstalled("//genuine");
    mirror.files = other.files;
    expectRefused(IndexFault::Unsigned);
}

TEST_F(HostileMirror, KeyCompromiseAndRotation)
{
    expectInstalled("//genuine");

    // Somebody has the keys of index and timestamp, and drives their versions up.
    SignedShop thief = shop;
    thief.put(u"notes"_s, "//stolen", u"9"_s);
    thief.index.version = 1000;
    thief.timestampVersion = 1000;
    thief.publish();
    mirror.files = thief.files;
    expectInstalled("//stolen"); // until the store has other keys, there is no telling

    // The store takes new ones: what the thief signed counts no more, nor do its versions.
    shop.indexKey = SecretKey::make().value();
    shop.timestampKey = SecretKey::make().value();
    shop.root.version = 2;
    shop.root.index = {{shop.indexKey.publicKey()}, 1};
    shop.root.timestamp = {{shop.timestampKey.publicKey()}, 1};
    shop.signRoot({shop.rootKey});
    shop.publish();
    mirror.files = shop.files;
    expectInstalled("//genuine");

    mirror.files.insert(timestampFileName(), thief.files[timestampFileName()]);
    expectRefused(IndexFault::Unsigned);

    // A list of keys by the thief, who has no root key; and one by a new root key that the old one does not
    // know.
    mirror.files = shop.files;
    RootFile stolen = shop.root;
    stolen.version = 3;
    mirror.files.insert(rootFileName(3), signedBy(stolen.toJson(), {thief.indexKey}).toBytes());
    expectRefused(IndexFault::RootUnsigned);
    const SecretKey newRoot = SecretKey::make().value();
    stolen.root = {{newRoot.publicKey()}, 1};
    mirror.files.insert(rootFileName(3), signedBy(stolen.toJson(), {newRoot}).toBytes());
    expectRefused(IndexFault::RootUnsigned);
    mirror.files.insert(rootFileName(3), signedBy(stolen.toJson(), {shop.rootKey}).toBytes());
    expectRefused(IndexFault::RootUnsigned);

    // Signed by the old and the new one it is the store's.
    shop.root = stolen;
    shop.signRoot({shop.rootKey, newRoot});
    mirror.files = shop.files;
    expectInstalled("//genuine");

    // From then on the old root key alone makes no more keys.
    stolen.version = 4;
    stolen.root = {{shop.rootKey.publicKey()}, 1};
    mirror.files.insert(rootFileName(4), signedBy(stolen.toJson(), {shop.rootKey}).toBytes());
    expectRefused(IndexFault::RootUnsigned);
}

TEST_F(HostileMirror, AProgramBuiltWithANewRootKeyPassesByTheOldOne)
{
    const SecretKey newRoot = SecretKey::make().value();
    shop.root.version = 2;
    shop.root.root = {{newRoot.publicKey()}, 1};
    shop.signRoot({shop.rootKey, newRoot});
    mirror.files = shop.files;

    Launcher launcher(mirror, newRoot.publicKey(), program.folder());
    launcher.store.askInstall(InstallFlag::ByName, u"notes"_s);
    EXPECT_TRUE(waitUntil([&] { return static_cast<bool>(launcher.host.agree); }));
}

TEST_F(HostileMirror, AThresholdOfTwoIsNotReachedByOneKeyTwice)
{
    const SecretKey second = SecretKey::make().value();
    shop.root.version = 2;
    shop.root.index = {{shop.indexKey.publicKey(), second.publicKey()}, 2};
    shop.signRoot({shop.rootKey});
    shop.publish();
    mirror.files = shop.files;
    expectRefused(IndexFault::Unsigned);

    SignedFile twice = signedBy(shop.index.toJson(), {shop.indexKey});
    twice.signatures.push_back(twice.signatures.front());
    shop.files[indexFileName(shop.index.version)] = twice.toBytes();
    shop.signTimestamp();
    mirror.files = shop.files;
    expectRefused(IndexFault::Mixed); // a file with two signatures of one key is none

    shop.files[indexFileName(shop.index.version)]
        = signedBy(shop.index.toJson(), {shop.indexKey, second}).toBytes();
    shop.signTimestamp();
    mirror.files = shop.files;
    expectInstalled("//genuine");
}

TEST_F(HostileMirror, RevokedPackage)
{
    shop.index.revoked.push_back(
        {shop.index.packages.front().checksum, u"It deletes what it should keep."_s});
    shop.publish();
    mirror.files = shop.files;
    EXPECT_EQ(install(), indexFaultText(IndexFault::Revoked) + u"\n\nIt deletes what it should keep."_s);
    expectNothing();
    EXPECT_FALSE(mirror.requests.contains(u"notes.wfp"_s));
}

TEST_F(HostileMirror, PackageForANewerPlum)
{
    shop.index.packages.front().edition = lastEdition + 1;
    shop.publish();
    mirror.files = shop.files;
    expectRefused(IndexFault::LaterEdition);
    EXPECT_FALSE(mirror.requests.contains(u"notes.wfp"_s));
}

TEST_F(HostileMirror, WhatIsRememberedIsNotBelievedOnceItIsDamaged)
{
    expectInstalled("//genuine");
    const QString memory = u"config/load/store/"_s
        + QDir(program.folder() + u"/config/load/store"_s)
              .entryList(QDir::Dirs | QDir::NoDotAndDotDot)
              .value(0);
    for (const auto *file : {"root.txt", "timestamp.txt", "index.txt"}) {
        ASSERT_FALSE(program.read(memory + u'/' + QLatin1StringView(file)).isEmpty()) << file;
        program.write(memory + u'/' + QLatin1StringView(file), "plum-signed 1\n\n{}");
        expectInstalled("//genuine");
    }
}

TEST_F(HostileMirror, EveryFaultHasASentenceOfItsOwn)
{
    QSet<QString> sentences;
    const int last = static_cast<int>(IndexFault::WrongChecksum);
    for (int fault = 1; fault <= last; ++fault)
        sentences += indexFaultText(static_cast<IndexFault>(fault));
    EXPECT_EQ(sentences.size(), last);
    EXPECT_FALSE(sentences.contains(QString()));
}
