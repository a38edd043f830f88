#include "store_test.h"

#include "store/download_texts.h"
#include "store_index/store_index.h"
#include "support/file_size_limit.h"

#include <QCryptographicHash>
#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::DownloadStatus;
using plum::InstallFlag;
using plum::test::StoreBench;

namespace {

class Store : public plum::test::StoreTest
{
protected:
    QByteArray indexOf(const QString &name, const QByteArray &package)
    {
        plum::StoreIndex index;
        index.packages.push_back({.name = name,
            .path = name + u".wfp"_s,
            .size = package.size(),
            .checksum = QCryptographicHash::hash(package, QCryptographicHash::Sha256)});
        return index.toJson();
    }

    void follow(const QString &link) { Q_EMIT bench.view.packageFollowed(QUrl(link)); }

    // The user answers the dialog that a link has brought up.
    void agree()
    {
        ASSERT_EQ(bench.events().size(), 1);
        EXPECT_TRUE(bench.events().first().startsWith("ask install "_L1))
            << qPrintable(bench.events().first());
        bench.platform.log.clear();
        bench.host.agree();
    }

    static QStringList startOf(const QString &name, const QString &url)
    {
        return {u"target %1.wfp"_s.arg(name), u"url "_s + url,
            u"index http://localhost/plum/download/index.json"_s, u"GetStart"_s};
    }
};

const QStringList success{u"message installed successfully (system-modal)"_s};

QStringList failure(const QString &why)
{
    return {u"message Error\n\n%1 (system-modal)"_s.arg(why), u"caption Download completed"_s};
}

} // namespace

TEST_F(Store, OpensTheCatalogue)
{
    bench.store.openStore();
    EXPECT_EQ(bench.events(),
        (QStringList{u"caption "_s, u"navigate http://localhost/plum/workflow_in/index.html?v=0.01"_s,
            u"height 625"_s, u"lay out"_s, u"show"_s}));
}

TEST_F(Store, WithoutABrowserEngineTheCatalogueOpensInTheDefaultBrowser)
{
    bench.view.available = false;
    bench.store.openStore();
    ASSERT_EQ(bench.events().size(), 1);
    EXPECT_TRUE(bench.events().first().contains("http://localhost/plum/workflow_in/index.html?v=0.01"_L1));
}

TEST_F(Store, Mode1DownloadsThePackageOfTheName)
{
    bench.files.write(u"config/apps/notes/main.wf"_s, "old");
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    EXPECT_EQ(bench.events(), startOf(u"notes"_s, u"http://localhost/plum/download/notes.wfp"_s));
    EXPECT_TRUE(bench.hasApp(u"notes"_s));
}

TEST_F(Store, ANameWithSignsOfAnAddressIsStillAName)
{
    bench.store.XzSet(InstallFlag::ByName, u"a#b%c d你"_s);
    EXPECT_EQ(bench.events(),
        startOf(u"a#b%c d你"_s, u"http://localhost/plum/download/a%23b%25c%20d%E4%BD%A0.wfp"_s));
    bench.transfers.end(DownloadStatus::Failed);
    bench.platform.log.clear();
    follow(u"http://localhost/plum/download/a%23b%25c%20d%E4%BD%A0.wfp"_s);
    agree();
    EXPECT_EQ(bench.events(),
        startOf(u"a#b%c d你"_s, u"http://localhost/plum/download/a%23b%25c%20d%E4%BD%A0.wfp"_s));
}

TEST_F(Store, Mode0IgnoresTheNameAndDeletesTheCurrentApp)
{
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    bench.transfers.end(DownloadStatus::Failed);
    bench.files.write(u"config/apps/notes/main.wf"_s, "old");
    bench.files.write(u"config/apps/other/main.wf"_s, "other");
    bench.platform.log.clear();
    bench.store.XzSet(InstallFlag::Reinstall, u"other"_s);
    EXPECT_EQ(bench.events(), startOf(u"notes"_s, u"http://localhost/plum/download/notes.wfp"_s));
    EXPECT_FALSE(bench.hasApp(u"notes"_s));
    EXPECT_TRUE(bench.hasApp(u"other"_s));
}

TEST_F(Store, InstallingTheSamePackageTwiceWithMode0RemovesTheOldAppFolderBeforeDownloading)
{
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    putPackage(u"notes"_s, "first");
    complete();
    bench.files.write(u"config/apps/notes/notes.txt"_s, "what the user's script wrote");

    bool wasGone = false;
    bench.transfers.onStart = [&] { wasGone = !bench.hasApp(u"notes"_s); };
    bench.store.XzSet(InstallFlag::Reinstall, {});
    EXPECT_TRUE(wasGone);
    putPackage(u"notes"_s, "second");
    complete();
    EXPECT_EQ(script(u"notes"_s), "second");
    EXPECT_EQ(bench.files.read(u"config/apps/notes/notes.txt"_s), "what the user's script wrote");
    EXPECT_TRUE(QFileInfo::exists(bench.trash.path() + u"/notes/notes.txt"_s));
}

TEST_F(Store, AnAppThatIsNotReplacedComesBack)
{
    bench.files.write(u"config/apps/notes/main.wf"_s, "old");
    // Not found, cut, stopped, no connection: each is an end of the download.
    for (const DownloadStatus end : {DownloadStatus::Failed, DownloadStatus::Stopped, DownloadStatus::Paused,
             DownloadStatus::BadAnswer, DownloadStatus::NotSent, DownloadStatus::NoFile}) {
        follow(u"http://localhost/plum/download/notes.wfp"_s);
        bench.store.XzSet(InstallFlag::Reinstall, {});
        EXPECT_FALSE(bench.hasApp(u"notes"_s));
        bench.transfers.end(end);
        EXPECT_EQ(script(u"notes"_s), "old");
    }
    const QByteArray package = putPackage(u"notes"_s, "new");
    for (const QByteArray &bad : {QByteArray("<html>Not found</html>"), package.first(package.size() / 2),
             QByteArray("\x1f\x8b\x08") + package}) {
        follow(u"http://localhost/plum/download/notes.wfp"_s);
        bench.store.XzSet(InstallFlag::Reinstall, {});
        bench.files.write(u"notes.wfp"_s, bad);
        complete();
        EXPECT_EQ(script(u"notes"_s), "old");
    }
    // A whole one, but not the one that the index names.
    follow(u"http://localhost/plum/download/notes.wfp"_s);
    bench.store.XzSet(InstallFlag::Reinstall, {});
    complete(indexOf(u"notes"_s, putPackage(u"notes"_s, "new") + 'x'));
    EXPECT_EQ(script(u"notes"_s), "old");
    EXPECT_FALSE(QFileInfo::exists(bench.files.folder() + u"/config/unpacking"_s));
}

TEST_F(Store, Mode0WithoutACurrentPackageDoesNothing)
{
    bench.files.write(u"config/apps/notes/main.wf"_s, "old");
    bench.store.XzSet(InstallFlag::Reinstall, u"notes"_s);
    EXPECT_TRUE(bench.events().isEmpty());
    EXPECT_TRUE(bench.hasApp(u"notes"_s));
}

TEST_F(Store, ANameThatIsNoFolderNameIsRefused)
{
    for (const char *name : {"..", "a/b", "a\\b", "a:b", "*", "a?", "a|b"}) {
        bench.platform.log.clear();
        bench.store.XzSet(InstallFlag::ByName, QString::fromLatin1(name));
        EXPECT_EQ(bench.events(), (QStringList{u"message Can not exist *[\\/:*?\"<|>]* (system-modal)"_s}))
            << name;
    }
    bench.platform.log.clear();
    bench.store.XzSet(InstallFlag::ByName, {});
    EXPECT_TRUE(bench.events().isEmpty());
}

TEST_F(Store, EveryStatusHasItsTitle)
{
    const QStringList titles{u"发送请求..."_s, u"获取远程文件信息..."_s, u"开始接收数据..."_s,
        u"下载被终止..."_s, u"停止下载"_s, u"暂停下载"_s, u"连接服务器失败"_s, u"发送请求失败"_s};
    for (int code = 1; code <= titles.size(); ++code) {
        bench.platform.log.clear();
        Q_EMIT bench.transfers.Status(DownloadStatus{code});
        EXPECT_EQ(bench.events(), QStringList{u"caption "_s + titles[code - 1]}) << code;
    }
    for (const int code : {10, 0, 11, -1}) {
        bench.platform.log.clear();
        Q_EMIT bench.transfers.Status(DownloadStatus{code});
        EXPECT_EQ(bench.events(), QStringList{u"caption "_s}) << code;
    }
    EXPECT_EQ(plum::downloadTitle(DownloadStatus::Complete), u"Download completed");
}

TEST_F(Store, InstallsInTheOrderOfItsSteps)
{
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    putPackage(u"notes"_s, "script");
    bench.files.write(u"notes.wfp.dl"_s, "x");
    bench.files.write(u"notes.wfp.dl.cfg"_s, "x");
    bench.platform.log.clear();

    bench.host.onMessage = [&] {
        EXPECT_EQ(script(u"notes"_s), "script");
        for (const auto *file : {"notes.wfp", "notes.wfp.dl", "notes.wfp.dl.cfg", "config/unpacking"})
            EXPECT_FALSE(QFileInfo::exists(bench.files.folder() + u'/' + QLatin1StringView(file))) << file;
    };
    complete();
    EXPECT_EQ(bench.events(),
        QStringList(u"add app notes"_s) + success + QStringList(u"caption Download completed"_s));
    EXPECT_EQ(bench.files.read(u"config/apps/notes/pictures/a.txt"_s), "picture");
}

TEST_F(Store, OnlyAWholePackageIsAnnouncedAndListed)
{
    const QByteArray package = putPackage(u"notes"_s, "script");
    for (const QByteArray &bad : {QByteArray("<html>Not found</html>"), package.first(package.size() - 10),
             QByteArray("\x1f\x8b\x08") + package}) {
        bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
        bench.files.write(u"notes.wfp"_s, bad);
        bench.platform.log.clear();
        complete();
        EXPECT_EQ(bench.events(), failure(u"This is no package, or only a part of one."_s));
        EXPECT_FALSE(bench.hasApp(u"notes"_s));
        EXPECT_FALSE(QFileInfo::exists(bench.files.folder() + u"/notes.wfp"_s));
    }
}

TEST_F(Store, AFullDiskLeavesNoHalfApp)
{
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    plum::ZipWriter archive;
    archive.add(u"main.wf"_s, "script", QDateTime::currentDateTime());
    archive.add(u"picture"_s, QByteArray(500'000, 'x'), QDateTime::currentDateTime());
    bench.files.write(u"notes.wfp"_s, archive.finish());
    bench.platform.log.clear();
    {
        const plum::test::FileSizeLimit limit(100'000);
        complete();
    }
    EXPECT_EQ(
        bench.events(), failure(u"There is no room left on the disk. The package was not installed."_s));
    EXPECT_FALSE(bench.hasApp(u"notes"_s));
    EXPECT_FALSE(QFileInfo::exists(bench.files.folder() + u"/notes.wfp"_s));
    EXPECT_FALSE(QFileInfo::exists(bench.files.folder() + u"/config/unpacking"_s));

    // With room again the same package installs.
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    bench.files.write(u"notes.wfp"_s, archive.finish());
    complete();
    EXPECT_EQ(script(u"notes"_s), "script");
}

TEST_F(Store, ADownloadBesideAnOlderPackageInstallsTheOlderOne)
{
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    putPackage(u"notes"_s, "older");
    bench.files.write(u"notes(1).wfp"_s, "what the downloader saved under a numbered name");
    complete();
    EXPECT_EQ(script(u"notes"_s), "older");
}

TEST_F(Store, Mode1OverAnAppReplacesItsFilesAndKeepsTheOthers)
{
    bench.files.write(u"config/apps/notes/main.wf"_s, "old");
    bench.files.write(u"config/apps/notes/mine"_s, "kept");
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    putPackage(u"notes"_s, "new");
    complete();
    EXPECT_EQ(script(u"notes"_s), "new");
    EXPECT_EQ(bench.files.read(u"config/apps/notes/mine"_s), "kept");
}

TEST_F(Store, WaitsForTheIndexBeforeInstalling)
{
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    const QByteArray package = putPackage(u"notes"_s, "script");
    bench.transfers.end(DownloadStatus::Complete);
    EXPECT_FALSE(bench.hasApp(u"notes"_s));
    Q_EMIT bench.transfers.indexArrived(indexOf(u"notes"_s, package));
    EXPECT_EQ(script(u"notes"_s), "script");
}

TEST_F(Store, ClosingTheWindowEndsTheWaitForTheIndex)
{
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    putPackage(u"notes"_s, "script");
    bench.transfers.end(DownloadStatus::Complete);
    EXPECT_FALSE(bench.hasApp(u"notes"_s));
    Q_EMIT bench.view.closeRequested();
    EXPECT_FALSE(bench.transfers.indexIsUnderWay);
    EXPECT_EQ(script(u"notes"_s), "script");
}

TEST_F(Store, APackageMayBeAsLargeAsTheIndexSays)
{
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    EXPECT_EQ(bench.transfers.largest, qint64(1) << 30);
    Q_EMIT bench.transfers.indexArrived(indexOf(u"notes"_s, QByteArray(1234, 'x')));
    EXPECT_EQ(bench.transfers.largest, 1234);
    bench.transfers.end(DownloadStatus::Failed);

    for (const QByteArray &index :
        {QByteArray(), indexOf(u"other"_s, "x"), QByteArray(R"({"type":"index"})")}) {
        bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
        Q_EMIT bench.transfers.indexArrived(index);
        EXPECT_EQ(bench.transfers.largest, qint64(1) << 30) << index.constData();
        bench.transfers.end(DownloadStatus::Failed);
    }
}

TEST_F(Store, APackageWithTheRightChecksumIsInstalled)
{
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    complete(indexOf(u"notes"_s, putPackage(u"notes"_s, "script")));
    EXPECT_EQ(script(u"notes"_s), "script");
}

TEST_F(Store, ADamagedPackageIsRefusedAndNothingOfItIsKept)
{
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    const QByteArray package = putPackage(u"notes"_s, "script");
    bench.platform.log.clear();
    QByteArray other = package;
    other.back() ^= 1;
    complete(indexOf(u"notes"_s, other));
    EXPECT_EQ(bench.events(),
        failure(u"The package is not the one that the store has signed. It was not installed."_s));
    EXPECT_FALSE(bench.hasApp(u"notes"_s));
    EXPECT_FALSE(QFileInfo::exists(bench.files.folder() + u"/notes.wfp"_s));
}

TEST_F(Store, OnThisComputerAPackageIsInstalledWithoutAnIndexEntry)
{
    for (const QByteArray &index : {QByteArray(), QByteArray("no index"), indexOf(u"other"_s, "x"),
             QByteArray(R"({"packages":[{"name":"notes","sha256":"12"},5]})")}) {
        QDir(bench.files.folder() + u"/config/apps/notes"_s).removeRecursively();
        bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
        putPackage(u"notes"_s, "script");
        complete(index);
        EXPECT_EQ(script(u"notes"_s), "script") << index.constData();
    }
}

TEST(StoreElsewhere, ThatSignsNothingInstallsNothingAndIsAskedNothing)
{
    for (const char *host :
        {"shop.test", "localhost.shop.test", "127.0.0.1.shop.test", "128.0.0.1", "[::2]"}) {
        const QUrl site(u"http://"_s + QLatin1StringView(host));
        StoreBench bench({site, site.resolved(QUrl(u"/plum/download/"_s))});
        bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
        bench.store.askInstall(InstallFlag::ByName, u"notes"_s);
        const QString sentence
            = u"message Error\n\nThis Plum knows no key of the store. Only a store on this "
              "computer may do without. Nothing was installed. (system-modal)"_s;
        EXPECT_EQ(bench.events(), (QStringList{sentence, sentence})) << host;
    }
}

TEST(SignedStore, InstallsNothingWithoutARowOfItsIndex)
{
    StoreBench bench(
        {QUrl(u"http://shop.test"_s), QUrl(u"http://shop.test/plum/download/"_s), {plum::PublicKey()}});
    plum::ZipWriter archive;
    archive.add(u"main.wf"_s, "script", QDateTime::currentDateTime());
    plum::StoreIndex index;
    index.packages.push_back({.name = u"notes"_s,
        .path = u"notes.wfp"_s,
        .size = archive.finish().size(),
        .checksum = QCryptographicHash::hash(archive.finish(), QCryptographicHash::Sha256)});

    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    EXPECT_EQ(bench.events().last(), u"signed index http://shop.test/plum/download/"_s);
    Q_EMIT bench.transfers.signedIndexArrived(plum::IndexFault::None, index.toJson());
    EXPECT_EQ(bench.events().last(), u"GetStart"_s);
    bench.transfers.end(DownloadStatus::Failed);

    // A transfer that nobody waits for any more.
    bench.files.write(u"notes.wfp"_s, archive.finish());
    bench.transfers.end(DownloadStatus::Complete);
    EXPECT_FALSE(bench.hasApp(u"notes"_s));

    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    Q_EMIT bench.transfers.signedIndexArrived(plum::IndexFault::None, index.toJson());
    bench.files.write(u"notes.wfp"_s, archive.finish());
    bench.transfers.end(DownloadStatus::Complete);
    EXPECT_TRUE(bench.hasApp(u"notes"_s));
}

TEST(StoreOnThisComputer, IsKnownByItsAddress)
{
    for (const char *host : {"localhost", "127.0.0.1", "127.3.2.1", "[::1]"}) {
        const QUrl site(u"http://"_s + QLatin1StringView(host));
        const plum::StoreAddresses addresses{site, site.resolved(QUrl(u"/plum/download/"_s))};
        EXPECT_TRUE(addresses.isLocal()) << host;
    }
}

TEST_F(Store, ThatSignsNothingSaysSoAndNothingElseIsKnownOfThePackage)
{
    bench.store.askInstall(InstallFlag::ByName, u"notes"_s);
    EXPECT_TRUE(bench.host.lastOffer.fromUnsignedStore);
    EXPECT_TRUE(bench.host.lastOffer.version.isEmpty());
    EXPECT_EQ(bench.host.lastOffer.size, 0);
    EXPECT_TRUE(bench.host.lastOffer.sheet.isEmpty());
    EXPECT_EQ(
        bench.events(), QStringList{u"ask install notes from http://localhost/plum/download/notes.wfp"_s});
}

TEST_F(Store, ASecondPackageHasToWaitForTheFirst)
{
    bench.store.XzSet(InstallFlag::ByName, u"first"_s);
    bench.platform.log.clear();
    bench.store.XzSet(InstallFlag::ByName, u"second"_s);
    bench.store.XzSet(InstallFlag::Reinstall, {});
    follow(u"http://localhost/plum/download/third.wfp"_s);
    EXPECT_TRUE(bench.events().isEmpty());

    putPackage(u"first"_s, "script");
    bench.host.onMessage = [&] { bench.store.XzSet(InstallFlag::ByName, u"second"_s); };
    complete();
    EXPECT_EQ(bench.events().first(), u"add app first"_s);
    EXPECT_TRUE(bench.events().contains(success.last()));

    bench.host.onMessage = {};
    bench.platform.log.clear();
    bench.store.XzSet(InstallFlag::ByName, u"second"_s);
    EXPECT_EQ(bench.events(), startOf(u"second"_s, u"http://localhost/plum/download/second.wfp"_s));
}

TEST_F(Store, AfterAFailedDownloadItCanBeStartedAgain)
{
    for (const int code : {4, 5, 6, 7, 8, 10}) {
        bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
        bench.transfers.end(DownloadStatus{code});
        bench.platform.log.clear();
        bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
        EXPECT_EQ(bench.events().last(), u"GetStart"_s) << code;
        bench.transfers.end(DownloadStatus{code});
    }
}

TEST_F(Store, ALinkToAPackageAsksAndRequestsNothingBefore)
{
    follow(u"http://localhost/plum/download/notes.wfp"_s);
    EXPECT_EQ(
        bench.events(), QStringList{u"ask install notes from http://localhost/plum/download/notes.wfp"_s});
    agree();
    EXPECT_EQ(bench.events(), startOf(u"notes"_s, u"http://localhost/plum/download/notes.wfp"_s));
}

TEST_F(Store, ALinkFurtherBelowTheBaseIsFetchedFromThere)
{
    follow(u"http://localhost/plum/download/more/notes.wfp"_s);
    agree();
    EXPECT_EQ(bench.events(), startOf(u"notes"_s, u"http://localhost/plum/download/more/notes.wfp"_s));
}

TEST_F(Store, ALinkToAnInstalledAppAsksForAName)
{
    bench.files.write(u"config/apps/notes/main.wf"_s, "old");
    follow(u"http://localhost/plum/download/notes.wfp"_s);
    EXPECT_EQ(bench.events(), QStringList{u"ask name notes"_s});
    EXPECT_TRUE(bench.hasApp(u"notes"_s));
}

TEST_F(Store, ANewNameInstallsTheLinkedPackageUnderIt)
{
    bench.files.write(u"config/apps/notes/main.wf"_s, "old");
    follow(u"http://localhost/plum/download/notes.wfp"_s);
    bench.platform.log.clear();
    bench.store.XzSet(InstallFlag::ByName, u"memo"_s);
    EXPECT_EQ(bench.events(), startOf(u"memo"_s, u"http://localhost/plum/download/notes.wfp"_s));
    complete(indexOf(u"notes"_s, putPackage(u"memo"_s, "script")));
    EXPECT_EQ(script(u"memo"_s), "script");
    EXPECT_EQ(script(u"notes"_s), "old");

    // The link counts once.
    bench.platform.log.clear();
    bench.store.XzSet(InstallFlag::ByName, u"chess"_s);
    EXPECT_EQ(bench.events(), startOf(u"chess"_s, u"http://localhost/plum/download/chess.wfp"_s));
}

TEST_F(Store, ConfirmingWithoutACheckReinstallsTheLinkedPackage)
{
    bench.files.write(u"config/apps/notes/main.wf"_s, "old");
    follow(u"http://localhost/plum/download/notes.wfp"_s);
    bench.platform.log.clear();
    bench.store.XzSet(InstallFlag::Reinstall, u"whatever"_s);
    EXPECT_EQ(bench.events(), startOf(u"notes"_s, u"http://localhost/plum/download/notes.wfp"_s));
    EXPECT_FALSE(bench.hasApp(u"notes"_s));
}

TEST_F(Store, TheNameBoxIsFollowedByTheDialog)
{
    bench.files.write(u"config/apps/notes/main.wf"_s, "old");
    follow(u"http://localhost/plum/download/notes.wfp"_s);
    bench.platform.log.clear();
    bench.store.askInstall(InstallFlag::ByName, u"memo"_s);
    EXPECT_EQ(
        bench.events(), QStringList{u"ask install memo from http://localhost/plum/download/notes.wfp"_s});
    agree();
    EXPECT_EQ(bench.events(), startOf(u"memo"_s, u"http://localhost/plum/download/notes.wfp"_s));
}

TEST_F(Store, TheDialogSaysThatAnAppIsReplaced)
{
    bench.files.write(u"config/apps/notes/main.wf"_s, "old");
    follow(u"http://localhost/plum/download/notes.wfp"_s);
    bench.platform.log.clear();
    bench.store.askInstall(InstallFlag::Reinstall, u"whatever"_s);
    EXPECT_EQ(bench.events(),
        QStringList{u"ask install notes from http://localhost/plum/download/notes.wfp (replacing)"_s});
    EXPECT_TRUE(bench.hasApp(u"notes"_s));
    agree();
    EXPECT_EQ(bench.events(), startOf(u"notes"_s, u"http://localhost/plum/download/notes.wfp"_s));
}

TEST_F(Store, WhatWasAskedIsWhatIsInstalledWhateverIsFollowedMeanwhile)
{
    bench.files.write(u"config/apps/other/main.wf"_s, "other");
    follow(u"http://localhost/plum/download/notes.wfp"_s);
    const std::function<void()> agreeToNotes = bench.host.agree;
    follow(u"http://localhost/plum/download/other.wfp"_s);
    bench.platform.log.clear();
    agreeToNotes();
    EXPECT_EQ(bench.events(), startOf(u"notes"_s, u"http://localhost/plum/download/notes.wfp"_s));
    EXPECT_EQ(script(u"other"_s), "other");
}

TEST_F(Store, APageAsksNoSecondQuestionOverTheFirst)
{
    bench.host.asking = true;
    follow(u"http://localhost/plum/download/notes.wfp"_s);
    EXPECT_TRUE(bench.events().isEmpty());
}

TEST_F(Store, ANameThatIsNoneIsRefusedBeforeTheDialog)
{
    bench.store.askInstall(InstallFlag::ByName, u"a/b"_s);
    EXPECT_EQ(bench.events(), (QStringList{u"message Can not exist *[\\/:*?\"<|>]* (system-modal)"_s}));
}

TEST_F(Store, AReopenedWindowSaysNothingOfADownloadThatIsOver)
{
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    bench.platform.log.clear();
    bench.store.openStore();
    EXPECT_FALSE(bench.events().contains(u"caption "_s)); // it is still on its way
    putPackage(u"notes"_s, "script");
    complete();
    bench.platform.log.clear();
    bench.store.openStore();
    EXPECT_TRUE(bench.events().contains(u"caption "_s));
}

TEST_F(Store, ALinkThatWantedAWindowOpensInTheDefaultBrowser)
{
    Q_EMIT bench.view.outsideOpened(QUrl(u"https://example.org/a?b=c"_s));
    ASSERT_EQ(bench.events().size(), 1);
    EXPECT_TRUE(bench.events().first().contains("https://example.org/a?b=c"_L1));
}

TEST_F(Store, ProgressReachesTheWindow)
{
    Q_EMIT bench.transfers.Progress(12.5F, u"8.00 MB"_s, u"1.00 MB"_s, u"512 KB"_s);
    EXPECT_EQ(bench.events(), QStringList{u"progress 12.5 8.00 MB 1.00 MB 512 KB"_s});
}

TEST_F(Store, ClosingHidesTheWindowAndClearsThePage)
{
    Q_EMIT bench.view.closeRequested();
    EXPECT_EQ(bench.events(), (QStringList{u"hide"_s, u"clear page"_s}));
    EXPECT_FALSE(bench.channel.isEnabled());
}

TEST_F(Store, ADownloadGoesOnAfterClosing)
{
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    Q_EMIT bench.view.closeRequested();
    putPackage(u"notes"_s, "script");
    complete();
    EXPECT_EQ(script(u"notes"_s), "script");
}

TEST_F(Store, ACalledProgramsPageIsPrepared)
{
    bench.store.setBrowserWidth(325);
    bench.store.setBrowserHeight(225);
    bench.store.navigateToBlank();
    bench.store.layOut();
    bench.store.showLoadingPicture();
    EXPECT_EQ(bench.events(),
        (QStringList{
            u"browser width 325"_s, u"browser height 225"_s, u"clear page"_s, u"lay out"_s, u"loading 1"_s}));
}
