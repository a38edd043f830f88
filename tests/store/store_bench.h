#pragma once

#include "engine/launcher.h"
#include "library/app_folders.h"
#include "library/app_list_file.h"
#include "library/package_installer.h"
#include "platform/recording/recording_platform.h"
#include "store/clipboard_channel.h"
#include "store/protocol/store_transfers.h"
#include "store/store_host.h"
#include "store/store_view.h"
#include "store/webbox.h"
#include "support/temporary_files.h"

namespace plum::test {

// A store window that writes down what is asked of it.
class RecordingView final : public StoreView
{
public:
    explicit RecordingView(recording::Log &log)
        : m_log(log)
    {
    }

    bool isAvailable() const override { return available; }
    void showWindow() override { m_log.add(QStringLiteral("show")); }
    void hideWindow() override { m_log.add(QStringLiteral("hide")); }
    void setCaption(const QString &text) override { m_log.add(QStringLiteral("caption ") + text); }
    void setWindowHeight(int pixels) override { m_log.add(QStringLiteral("height %1").arg(pixels)); }
    void navigate(const QUrl &address) override
    {
        m_log.add(QStringLiteral("navigate ") + address.toString());
    }
    void writePage(const QString &html) override { m_log.add(QStringLiteral("write ") + html); }
    void clearPage() override { m_log.add(QStringLiteral("clear page")); }
    void setBrowserWidth(int pixels) override { m_log.add(QStringLiteral("browser width %1").arg(pixels)); }
    void setBrowserHeight(int pixels) override { m_log.add(QStringLiteral("browser height %1").arg(pixels)); }
    void layOut() override { m_log.add(QStringLiteral("lay out")); }
    void setLoadingVisible(bool visible) override { m_log.add(QStringLiteral("loading %1").arg(visible)); }
    void setProgress(const DownloadProgress &progress) override
    {
        m_log.add(QStringLiteral("progress %1 %2 %3 %4")
                      .arg(progress.percent)
                      .arg(progress.total, progress.done, progress.speed));
    }

    void setApps(const std::vector<StoreApp> &of) override { apps = of; }
    void setFailed(const QString &keyword) override { failed = keyword; }

    bool available = true;
    std::vector<StoreApp> apps;
    QString failed;

private:
    recording::Log &m_log;
};

// Transfers that a test drives itself.
class RecordingTransfers final : public StoreTransfers
{
public:
    explicit RecordingTransfers(recording::Log &log)
        : m_log(log)
    {
    }

    void setTarget(const QString &path) override { m_log.add(QStringLiteral("target ") + path); }
    void setUrl(const QString &url) override { m_log.add(QStringLiteral("url ") + url); }
    void GetStart() override
    {
        busy = true;
        m_log.add(QStringLiteral("GetStart"));
        if (onStart)
            onStart();
    }
    void setLargest(qint64 bytes) override { largest = bytes; }
    bool wasTooLarge() const override { return false; }
    bool isBusy() const override { return busy; }
    void fetchIndex(const QUrl &address) override
    {
        m_log.add(QStringLiteral("index ") + address.toString());
        indexIsUnderWay = true;
    }
    void fetchSignedIndex(const SignedStore &store) override
    {
        m_log.add(QStringLiteral("signed index ") + store.base.toString());
    }
    void endIndex() override
    {
        if (std::exchange(indexIsUnderWay, false))
            Q_EMIT indexArrived({});
    }

    // Ends the transfer.
    void end(DownloadStatus status)
    {
        busy = false;
        Q_EMIT Status(status);
    }

    bool busy = false;
    bool indexIsUnderWay = false;
    qint64 largest = 0;
    std::function<void()> onStart;

private:
    recording::Log &m_log;
};

class RecordingHost final : public StoreHost
{
public:
    explicit RecordingHost(recording::Log &log)
        : m_log(log)
    {
    }

    void showMessage(const Message &message) override
    {
        m_log.add(
            QStringLiteral("message %1%2")
                .arg(message.text, message.systemModal ? QStringLiteral(" (system-modal)") : QString()));
        if (onMessage)
            onMessage();
    }
    void askName(const QString &name) override { m_log.add(QStringLiteral("ask name ") + name); }
    void askInstall(const InstallOffer &offer, std::function<void()> install) override
    {
        m_log.add(QStringLiteral("ask install %1 from %2%3")
                      .arg(offer.keyword, offer.origin,
                          offer.replaces ? QStringLiteral(" (replacing)") : QString()));
        lastOffer = offer;
        agree = std::move(install);
    }
    bool isAsking() const override { return asking; }
    void addApp(const QString &keyword) override { m_log.add(QStringLiteral("add app ") + keyword); }

    std::function<void()> onMessage;
    InstallOffer lastOffer; // the last question
    std::function<void()> agree; // its answer
    bool asking = false;

private:
    recording::Log &m_log;
};

// The store's logic on recording neighbours, in a program folder of its own.
struct StoreBench
{
    explicit StoreBench(const StoreAddresses &of
        = {QUrl(QStringLiteral("http://localhost")), QUrl(QStringLiteral("http://localhost/plum/download/"))})
        : addresses(of)
    {
        platform.paths().folder = files.folder();
    }

    QStringList events() const { return platform.log.lines(); }
    bool hasApp(const QString &name) const
    {
        return QFileInfo::exists(files.folder() + QStringLiteral("/config/apps/") + name);
    }

    TemporaryFiles files;
    recording::RecordingPlatform platform;
    RecordingView view{platform.log};
    RecordingTransfers transfers{platform.log};
    RecordingHost host{platform.log};
    ClipboardChannel channel{platform.clipboard()};
    AppFolders folders{platform.paths()};
    AppListFile listFile{platform.paths(), platform.textCodec()};
    QTemporaryDir trash;
    PackageInstaller installer{{platform.paths(), platform.textCodec(),
        {folders, listFile, [this](const QString &path) {
             return QDir().rename(path, trash.path() + u'/' + QFileInfo(path).fileName());
         }}}};
    const StoreAddresses addresses;
    std::vector<StoreApp> installedApps;
    webbox store{{view, transfers, channel, host, platform.shell(), platform.paths(), installer, addresses,
        [this] { return installedApps; }}};
};

} // namespace plum::test
