#include "store/webbox.h"

#include "engine/launcher.h"
#include "library/package_index.h"
#include "library/package_installer.h"
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

constexpr int storeHeight = 625; // pixels
constexpr qint64 largestPackage = qint64(1) << 30; // bytes, where the index says nothing

} // namespace

webbox::webbox(const Needs &needs)
    : m_use(needs)
    , m_package(needs.paths)
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
    // What was said of a download that is over was said to whoever had the window open then.
    if (!isBusy())
        m_use.view.setCaption({});
    m_use.view.navigate(m_use.addresses.catalogue());
    m_use.view.setWindowHeight(storeHeight);
    m_use.view.layOut();
    m_use.view.showWindow();
}

bool webbox::isBusy() const
{
    return m_isInstalling || m_use.transfers.isBusy();
}

void webbox::followPackage(const QUrl &link)
{
    const std::optional<QString> name = packageNameOf(link, m_use.addresses.downloadBase);
    // One question at a time: a page asks no second one over it.
    if (!name || isBusy() || m_use.host.isAsking())
        return;
    m_asked = Source{*name, link.adjusted(QUrl::RemoveFragment | QUrl::NormalizePathSegments)};
    if (!m_use.installer.appExists(*name)) {
        askInstall(InstallFlag::ByName, *name);
        return;
    }
    m_currentName = *name;
    m_source = *m_asked;
    m_use.host.askName(*name);
}

bool webbox::isUsable(const QString &name) const
{
    if (name.isEmpty())
        return false;
    if (isPackageName(name))
        return true;
    m_use.host.showMessage({.text = keywordMessage(KeywordFault::Forbidden), .systemModal = true});
    return false;
}

void webbox::askInstall(InstallFlag flag, const QString &name)
{
    const bool isAnew = flag == InstallFlag::Reinstall;
    const QString wanted = isAnew ? m_currentName : name;
    if (isBusy() || !isUsable(wanted))
        return;
    const Source source = isAnew ? m_source : m_asked.value_or(Source{name, m_use.addresses.package(name)});
    m_use.host.askInstall({.keyword = wanted,
                              .origin = source.address.toString(),
                              .replaces = isAnew && m_use.installer.appExists(wanted)},
        [this, flag, wanted, source] {
            // What was asked is what is done, whatever link has been followed meanwhile.
            m_currentName = wanted;
            m_source = source;
            m_asked = source;
            XzSet(flag, wanted);
        });
}

void webbox::XzSet(InstallFlag mode, const QString &name)
{
    const bool isAnew = mode == InstallFlag::Reinstall;
    if (isBusy() || !isUsable(isAnew ? m_currentName : name))
        return;
    if (isAnew) {
        if (!m_use.installer.setAside(m_currentName)) {
            sayFailed({InstallFault::NotWritable});
            return;
        }
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
    m_use.transfers.setLargest(largestPackage);
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
    if (!isOnTheWay(status)) {
        m_isInstalling = false;
        m_use.installer.putBack();
    }
    m_use.view.setCaption(downloadTitle(status).toString());
}

void webbox::takeIndex(const QByteArray &index)
{
    m_index = index;
    if (const std::optional<qint64> size = packageSize(index, m_source.name))
        m_use.transfers.setLargest(*size);
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
    InstallResult result{InstallFault::Damaged};
    if (!checksum || m_package.isGenuine(m_currentName, *checksum)) {
        const bool isAnew = m_use.installer.isAside(m_currentName);
        result = m_use.installer.install({.path = m_package.path(m_currentName),
                                             .keyword = m_currentName,
                                             .carried = isAnew ? CarriedFiles::UsersOwn : CarriedFiles::All,
                                             .place = LibraryChange::Place::End},
            [this](const QString &keyword) { m_use.host.addApp(keyword); });
    }
    m_use.installer.putBack();
    m_package.deleteAll(m_currentName);
    if (result)
        m_use.host.showMessage({.text = u"installed successfully"_s, .systemModal = true});
    else
        sayFailed(result);
}

void webbox::sayFailed(const InstallResult &result)
{
    m_use.host.showMessage({.text = result.message(), .icon = MessageIcon::Critical, .systemModal = true});
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
