#include "store_test.h"

using namespace Qt::StringLiterals;
using plum::DownloadStatus;
using plum::InstallFlag;

namespace {

// What has failed once, and what is wanted once more.
class StoreRetry : public plum::test::StoreTest
{
protected:
    void arrive(const QString &name, const QByteArray &script)
    {
        putPackage(name, script);
        complete();
    }
};

} // namespace

TEST_F(StoreRetry, AFailedDownloadIsTriedAgainAsItWasAgreedTo)
{
    QStringList failed;
    QObject::connect(&bench.store, &plum::webbox::failed, [&](const QString &keyword) { failed += keyword; });
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    EXPECT_EQ(bench.view.failed, QString());
    bench.transfers.end(DownloadStatus::BadAnswer);
    EXPECT_EQ(bench.view.failed, u"notes"_s);
    EXPECT_EQ(failed, QStringList{u"notes"_s});

    bench.platform.log.clear();
    Q_EMIT bench.view.retryRequested();
    EXPECT_EQ(bench.view.failed, QString());
    EXPECT_EQ(bench.events(),
        (QStringList{u"target notes.wfp"_s, u"url http://localhost/plum/download/notes.wfp"_s,
            u"index http://localhost/plum/download/index.json"_s, u"GetStart"_s}));
    arrive(u"notes"_s, "whole");
    EXPECT_EQ(script(u"notes"_s), "whole");

    bench.platform.log.clear();
    Q_EMIT bench.view.retryRequested();
    EXPECT_TRUE(bench.events().isEmpty()) << "nothing has failed any more";
}

TEST_F(StoreRetry, APackageThatDoesNotOpenIsTriedAgainToo)
{
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    bench.files.write(u"notes.wfp"_s, "<html>Not found</html>");
    Q_EMIT bench.transfers.indexArrived({});
    bench.transfers.end(DownloadStatus::Complete);
    EXPECT_EQ(bench.view.failed, u"notes"_s);
    Q_EMIT bench.view.retryRequested();
    arrive(u"notes"_s, "whole");
    EXPECT_EQ(script(u"notes"_s), "whole");
}

TEST_F(StoreRetry, ARetryOfAReplacementReplaces)
{
    bench.files.write(u"config/apps/notes/main.wf"_s, "old");
    Q_EMIT bench.view.packageFollowed(QUrl(u"http://localhost/plum/download/notes.wfp"_s));
    bench.store.XzSet(InstallFlag::Reinstall, {});
    bench.transfers.end(DownloadStatus::Failed);
    EXPECT_EQ(script(u"notes"_s), "old");
    Q_EMIT bench.view.retryRequested();
    EXPECT_FALSE(bench.hasApp(u"notes"_s));
    arrive(u"notes"_s, "new");
    EXPECT_EQ(script(u"notes"_s), "new");
}

TEST_F(StoreRetry, NothingIsTriedAgainWhileSomethingIsOnItsWayOrAsked)
{
    bench.store.XzSet(InstallFlag::ByName, u"notes"_s);
    bench.transfers.end(DownloadStatus::Failed);
    bench.host.asking = true;
    bench.platform.log.clear();
    Q_EMIT bench.view.retryRequested();
    EXPECT_TRUE(bench.events().isEmpty());
    bench.host.asking = false;
    Q_EMIT bench.view.retryRequested();
    bench.platform.log.clear();
    Q_EMIT bench.view.retryRequested();
    EXPECT_TRUE(bench.events().isEmpty());
}

TEST_F(StoreRetry, TheWindowIsToldWhichAppsAreInstalledAndAsksForOneAnew)
{
    bench.installedApps = {{.keyword = u"notes"_s, .path = u"1.2/notes.wfp"_s}};
    bench.files.write(u"config/apps/notes/main.wf"_s, "old");
    bench.store.openStore();
    EXPECT_EQ(bench.view.apps, bench.installedApps);
    bench.platform.log.clear();
    Q_EMIT bench.view.anewRequested(u"other"_s);
    EXPECT_TRUE(bench.events().isEmpty());
    Q_EMIT bench.view.anewRequested(u"notes"_s);
    EXPECT_EQ(bench.events(),
        QStringList{u"ask install notes from http://localhost/plum/download/1.2/notes.wfp (replacing)"_s});
    bench.host.agree();
    bench.installedApps.front().version = u"2"_s;
    arrive(u"notes"_s, "new");
    EXPECT_EQ(script(u"notes"_s), "new");
    EXPECT_EQ(bench.view.apps, bench.installedApps);
}
