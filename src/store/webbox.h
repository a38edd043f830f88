#pragma once

#include "commands/store_page.h"
#include "download/download_status.h"
#include "library/install_offer.h"
#include "store/downloaded_package.h"
#include "store/store_addresses.h"

#include <QObject>
#include <QStringList>
#include <QUrl>

#include <optional>

namespace plum {

class ClipboardChannel;
class PackageInstaller;
struct InstallResult;
class Shell;
class StoreHost;
class StoreTransfers;
class StoreView;

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
    };

    explicit webbox(const Needs &needs);

    // Opens the catalogue.
    void openStore();

    // Asks the user whether to install a package, as XzSet would, and does it when the answer is yes. Nothing
    // is requested before.
    void askInstall(InstallFlag flag, const QString &name);

    // Starts installing a package: the package `name`, or the current one anew, where `name` is not looked
    // at; its app leaves the library first and comes back if nothing takes its place. While a package is on
    // its way, nothing happens: two of them would be mixed up.
    void XzSet(InstallFlag mode, const QString &name);

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

private:
    // Where the current package comes from.
    struct Source
    {
        QString name; // in the store
        QUrl address;
    };

    void followPackage(const QUrl &link);
    bool isBusy() const;
    bool isUsable(const QString &name) const;
    void openOutside(const QUrl &address);
    void showArrivedPage(const QString &html);
    void start();
    void showStatus(DownloadStatus status);
    void takeIndex(const QByteArray &index);
    void installWhenReady();
    void install();
    void sayFailed(const InstallResult &result);

    Needs m_use;
    DownloadedPackage m_package;
    QString m_currentName;
    Source m_source;
    std::optional<Source> m_asked; // the link that the user is being asked about

    // A package is installed when it and the index are there.
    bool m_hasPackage = false;
    std::optional<QByteArray> m_index;
    bool m_isInstalling = false;
};

} // namespace plum
