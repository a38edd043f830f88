#pragma once

#include "commands/store_page.h"
#include "download/download_status.h"
#include "library/install_offer.h"
#include "store/downloaded_package.h"
#include "store/store_addresses.h"
#include "store/store_view.h"
#include "store_index/index_fault.h"
#include "store_index/store_index.h"

#include <QObject>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <optional>

namespace plum {

class ClipboardChannel;
class PackageInstaller;
struct InstallResult;
class Shell;
class StoreHost;
class StoreTransfers;

// The package store: what its window shows, and how a package becomes an app. The window itself is a
// `StoreView`; without a browser engine the catalogue opens in the default browser, and packages install by
// name all the same.
class webbox final : public QObject, public StorePage
{
    Q_OBJECT

public:
    struct Needs
    {
        StoreView &view;
        StoreTransfers &transfers;
        ClipboardChannel &channel;
        StoreHost &host;
        Shell &shell;
        Paths &paths;
        PackageInstaller &installer;
        StoreAddresses addresses;
        // The apps of the library that are the store's.
        std::function<std::vector<StoreApp>()> apps = {};
    };

    explicit webbox(const Needs &needs);

    // Opens the catalogue.
    void openStore();

    // Asks the user whether to install a package, as XzSet would, and does it when the answer is yes. Of a
    // store that signs nothing, nothing is requested before; of any other its index, which has to name the
    // package.
    void askInstall(InstallFlag flag, const QString &name);

    // Starts installing a package: the package `name`, or the current one anew, where `name` is not looked
    // at; its app leaves the library first and comes back if nothing takes its place. While a package is on
    // its way, nothing happens: two of them would be mixed up.
    void XzSet(InstallFlag mode, const QString &name);

    // Whether a package or the index is on its way.
    bool isBusy() const;

    // Asks a store that signs for its newest index. It does not wait: `then` gets it, or why there is none.
    // Nothing happens while a package is on its way; false then.
    using IndexTaker = std::function<void(IndexFault fault, const std::optional<StoreIndex> &index)>;
    bool askIndex(IndexTaker then);

    // Brings an app to this version of its package, without a question and without a word unless it fails. It
    // does not wait: `then` is called at the end. While a package is on its way nothing happens; false then.
    bool update(const QString &keyword, const IndexedPackage &package, std::function<void(bool isDone)> then);

    // Tells the window which apps are installed.
    void showApps();

    // Asks whether to install an app of the store over itself, in its newest version.
    void askAnew(const QString &keyword);

    // Does once more what was agreed to and has failed. It is asked about again only where the store's index
    // names another package now.
    void retry();

    // Tells the user why nothing is installed. It waits until that is read.
    void sayFault(IndexFault fault, const QString &reason = {});

    // Shows a piece of HTML in place of the page.
    void webw(const QString &html);

    // The text up to and with its second "#", and the text after it; empty when there are not two.
    // Kept: the first part ends in "#", the second does not begin with it. Part of the window's interface;
    // nothing in this program calls it.
    static QStringList ShellUrl(const QString &text);

    // What follows the first `prefix` in `link`, empty when there is none. Each "\" in `prefix` becomes "/",
    // in the caller's text too. Part of the window's interface; nothing in this program calls it.
    static QString repurl(const QString &link, QString &prefix);

    // What the user's closing does: no more pages through the clipboard, the window hidden, its page gone.
    void close();

    void setBrowserWidth(int pixels) override;
    void setBrowserHeight(int pixels) override;
    void navigateToBlank() override;
    void layOut() override;
    void showLoadingPicture() override;

Q_SIGNALS:
    // Whenever a signed index has come and was believed, whoever wanted it.
    void indexBelieved(const plum::StoreIndex &index);

    // A package has become an app.
    void installed();

    // It has not; the store's window may be closed meanwhile.
    void failed(const QString &keyword);

private:
    // Where the current package comes from.
    struct Source
    {
        QString name; // in the store
        QUrl address;
    };

    // An installation that was begun.
    struct Attempt
    {
        InstallFlag mode = InstallFlag::ByName;
        QString keyword;
        Source source;
        std::optional<IndexedPackage> named;
    };

    void followPackage(const QUrl &link);
    bool isUsable(const QString &name) const;
    bool mayBeHad();
    void findNamed(const Source &source, std::function<void(const IndexedPackage &package)> then);
    void takeSignedIndex(IndexFault fault, const QByteArray &index);
    void offer(InstallFlag flag, const QString &wanted, const Source &source,
        const std::optional<IndexedPackage> &named);
    void begin(InstallFlag mode);
    void fetchSigned(IndexTaker then);
    void endInstall(bool isDone);
    void openOutside(const QUrl &address);
    void showArrivedPage(const QString &html);
    void start(InstallFlag mode);
    void showStatus(DownloadStatus status);
    void takeIndex(const QByteArray &index);
    void installWhenReady();
    bool install();
    void sayFixed(const QString &text) const;
    void sayFailed(const InstallResult &result);
    void sayWhy(const QString &error);

    Needs m_use;
    DownloadedPackage m_package;
    QString m_currentName;
    Source m_source;
    std::optional<Source> m_asked; // the link that the user is being asked about

    // What the signed index says of the current package, and who waits to know it.
    std::optional<IndexedPackage> m_named;
    IndexTaker m_whenIndex;
    std::function<void(bool isDone)> m_whenUpdated; // set: the current package is an update

    Attempt m_attempt; // the one that is under way
    std::optional<Attempt> m_failed; // the last one, if it failed

    // From a store that signs nothing a package is installed when it and the index, or none, are there.
    bool m_hasPackage = false;
    bool m_hasIndex = false;
    bool m_isInstalling = false;
};

} // namespace plum
