#include "store/webbox.h"

#include "commands/file_functions.h"
#include "engine/launcher.h"
#include "library/package_index.h"
#include "platform/shell.h"
#include "store/clipboard_channel.h"
#include "store/download_texts.h"
#include "store/protocol/package_link.h"
#include "store/protocol/store_transfers.h"
#include "store/store_host.h"
#include "store/store_view.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int reinstall = 0; // modes of XzSet
constexpr int installNamed = 1;
constexpr int storeHeight = 625; // pixels

} // namespace

webbox::webbox(const Needs &needs)
    : m_use(needs)
    , m_install(needs.paths, needs.codec)
{
    connect(&m_use.view, &StoreView::packageFollowed, this, &webbox::followPackage);
    connect(&m_use.view, &StoreView::outsideOpened, this, &webbox::openOutside);
    connect(&m_use.view, &StoreView::closeRequested, this, &webbox::close);
    connect(&m_use.channel, &ClipboardChannel::pageArrived, this, &webbox::showArrivedPage);
    connect(&m_use.transfers, &StoreTransfers::Status, this, &webbox::showStatus);
    connect(&m_use.transfers, &StoreTransfers::indexArrived, this, &webbox::takeIndex);
    connect(&m_use.transfers, &StoreTransfers::Progress, this,
        [this](float percent, const QString &total, const QString &done, const QString &speed) {
            m_use.view.setProgress({percent, total, done, speed});
        });
}

void webbox::openStore()
{
    if (!m_use.view.isAvailable()) {
        openOutside(m_use.addresses.catalogue());
        return;
    }
    m_use.view.navigate(m_use.addresses.catalogue());
    m_use.view.setWindowHeight(storeHeight);
    m_use.view.layOut();
    m_use.view.showWindow();
}

void webbox::followPackage(const QUrl &link)
{
    const std::optional<QString> name = packageNameOf(link, m_use.addresses.downloadBase);
    if (!name || m_isInstalling || m_use.transfers.isBusy())
        return;
    m_asked = Source{*name, link.adjusted(QUrl::RemoveFragment | QUrl::NormalizePathSegments)};
    if (!m_install.appExists(*name)) {
        XzSet(installNamed, *name);
        return;
    }
    m_currentName = *name;
    m_source = *m_asked;
    m_use.host.askName(*name);
}

void webbox::XzSet(int mode, const QString &name)
{
    if (m_isInstalling || m_use.transfers.isBusy())
        return;
    const QString &wanted = mode == reinstall ? m_currentName : name;
    if (wanted.isEmpty())
        return;
    if (!isPackageName(wanted)) {
        m_use.host.showMessage({.text = u"Can not exist *[\\/:*?\"<|>]*"_s, .systemModal = true});
        return;
    }
    if (mode == reinstall) {
        FolderOp(u"delfold"_s, m_install.appFolder(m_currentName), m_use.paths);
    } else {
        m_currentName = name;
        m_source = m_asked.value_or(Source{name, m_use.addresses.package(name)});
    }
    m_asked.reset();
    start();
}

void webbox::start()
{
    m_isInstalling = true;
    m_hasPackage = false;
    m_index.reset();
    m_use.transfers.setTarget(m_currentName + packageEnding);
    m_use.transfers.setUrl(m_source.address.toString(QUrl::FullyEncoded));
    m_use.transfers.fetchIndex(m_use.addresses.index());
    m_use.transfers.GetStart();
}

void webbox::showStatus(DownloadStatus status)
{
    if (status == DownloadStatus::Complete) {
        m_hasPackage = true;
        installWhenReady();
        return;
    }
    if (!isOnTheWay(status))
        m_isInstalling = false;
    m_use.view.setCaption(downloadTitle(status).toString());
}

void webbox::takeIndex(const QByteArray &index)
{
    m_index = index;
    installWhenReady();
}

void webbox::installWhenReady()
{
    if (!m_hasPackage || !m_index)
        return;
    m_hasPackage = false;
    install();
    m_isInstalling = false;
    m_use.view.setCaption(downloadTitle(DownloadStatus::Complete).toString());
}

void webbox::install()
{
    const std::optional<QByteArray> checksum = packageChecksum(*m_index, m_source.name);
    const bool isDamaged = checksum && !m_install.isGenuine(m_currentName, *checksum);
    const bool isUnpacked = !isDamaged && m_install.unpack(m_currentName);
    m_install.deletePackage(m_currentName);
    if (!isUnpacked) {
        m_use.host.showMessage(
            {.text = isDamaged ? u"The package is damaged and was not installed."_s
                               : u"There is no room left on the disk. The package was not installed."_s,
                .icon = MessageIcon::Critical,
                .systemModal = true});
        return;
    }
    m_use.host.showMessage({.text = u"installed successfully"_s, .systemModal = true});
    m_use.host.addApp(m_currentName);
}

void webbox::webw(const QString &html)
{
    m_use.view.writePage(html);
}

void webbox::showArrivedPage(const QString &html)
{
    webw(html);
    m_use.view.showWindow();
}

QStringList webbox::ShellUrl(const QString &text)
{
    const qsizetype first = text.indexOf(u'#');
    const qsizetype second = first < 0 ? first : text.indexOf(u'#', first + 1);
    if (second < 0)
        return {};
    return {text.first(second + 1), text.sliced(second + 1)};
}

QString webbox::repurl(const QString &link, QString &prefix)
{
    prefix.replace(u'\\', u'/');
    const qsizetype found = link.indexOf(prefix);
    return found < 0 ? QString() : link.sliced(found + prefix.size());
}

void webbox::openOutside(const QUrl &address)
{
    m_use.shell.open(address.toString(QUrl::FullyEncoded), {}, ShowState::Normal);
}

void webbox::close()
{
    m_use.channel.setEnabled(false);
    m_use.view.hideWindow();
    m_use.view.clearPage();
    m_use.transfers.endIndex();
}

void webbox::setBrowserWidth(int pixels)
{
    m_use.view.setBrowserWidth(pixels);
}

void webbox::setBrowserHeight(int pixels)
{
    m_use.view.setBrowserHeight(pixels);
}

void webbox::navigateToBlank()
{
    m_use.view.clearPage();
}

void webbox::layOut()
{
    m_use.view.layOut();
}

void webbox::showLoadingPicture()
{
    m_use.view.setLoadingVisible(true);
    // The program that was started delivers its page through the clipboard.
    m_use.channel.setEnabled(true);
}

} // namespace plum
