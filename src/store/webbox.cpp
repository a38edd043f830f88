#include "store/webbox.h"

#include "engine/launcher.h"
#include "library/fixed_texts.h"
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
    connect(&m_use.view, &StoreView::anewRequested, this, &webbox::askAnew);
    connect(&m_use.view, &StoreView::retryRequested, this, &webbox::retry);
    connect(&m_use.channel, &ClipboardChannel::pageArrived, this, &webbox::showArrivedPage);
    connect(&m_use.transfers, &StoreTransfers::Status, this, &webbox::showStatus);
    connect(&m_use.transfers, &StoreTransfers::indexArrived, this, &webbox::takeIndex);
    connect(&m_use.transfers, &StoreTransfers::signedIndexArrived, this, &webbox::takeSignedIndex);
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
    showApps();
    m_use.view.navigate(m_use.addresses.catalogue());
    m_use.view.setWindowHeight(storeHeight);
    m_use.view.layOut();
    m_use.view.showWindow();
}

bool webbox::isBusy() const
{
    return m_isInstalling || m_whenIndex || m_use.transfers.isBusy();
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
    sayFixed(keywordMessage(KeywordFault::Forbidden));
    return false;
}

void webbox::askInstall(InstallFlag flag, const QString &name)
{
    const bool isAnew = flag == InstallFlag::Reinstall;
    const QString wanted = isAnew ? m_currentName : name;
    if (isBusy() || !isUsable(wanted) || !mayBeHad())
        return;
    const Source source = isAnew ? m_source : m_asked.value_or(Source{name, m_use.addresses.package(name)});
    if (m_use.addresses.isSigned())
        findNamed(source, [this, flag, wanted, source](const IndexedPackage &package) {
            offer(flag, wanted, source, package);
        });
    else
        offer(flag, wanted, source, {});
}

void webbox::offer(
    InstallFlag flag, const QString &wanted, const Source &source, const std::optional<IndexedPackage> &named)
{
    InstallOffer offer{.keyword = wanted,
        .origin = source.address.toString(),
        .replaces = flag == InstallFlag::Reinstall && m_use.installer.appExists(wanted),
        .fromUnsignedStore = !m_use.addresses.isSigned()};
    if (named) {
        offer.version = named->version;
        offer.size = named->size;
        offer.sheet = named->sheet;
    }
    m_use.host.askInstall(offer, [this, flag, wanted, source, named] {
        // What was asked is what is done, whatever link has been followed meanwhile.
        if (isBusy())
            return;
        m_currentName = wanted;
        m_source = source;
        m_asked = source;
        m_named = named;
        XzSet(flag, wanted);
    });
}

void webbox::XzSet(InstallFlag mode, const QString &name)
{
    const bool isAnew = mode == InstallFlag::Reinstall;
    if (isBusy() || !isUsable(isAnew ? m_currentName : name) || !mayBeHad())
        return;
    if (!isAnew) {
        m_currentName = name;
        m_source = m_asked.value_or(Source{name, m_use.addresses.package(name)});
    }
    m_asked.reset();
    if (!m_use.addresses.isSigned() || m_named) {
        begin(mode);
        return;
    }
    findNamed(m_source, [this, mode](const IndexedPackage &package) {
        m_named = package;
        begin(mode);
    });
}

void webbox::begin(InstallFlag mode)
{
    if (mode == InstallFlag::Reinstall && !m_use.installer.setAside(m_currentName)) {
        m_named.reset();
        sayFailed({InstallFault::NotWritable});
        return;
    }
    start(mode);
}

void webbox::start(InstallFlag mode)
{
    m_attempt = {mode, m_currentName, m_source, m_named};
    m_failed.reset();
    m_use.view.setFailed({});
    m_isInstalling = true;
    m_hasPackage = false;
    m_hasIndex = m_use.addresses.isSigned();
    m_use.transfers.setTarget(m_currentName + packageEnding);
    m_use.transfers.setUrl(m_source.address.toString(QUrl::FullyEncoded));
    m_use.transfers.setLargest(m_named ? m_named->size : largestPackage);
    if (!m_use.addresses.isSigned())
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
    const bool isOver = !isOnTheWay(status);
    const bool isTooLarge = isOver && m_named && m_use.transfers.wasTooLarge();
    if (isOver)
        m_use.installer.putBack();
    m_use.view.setCaption(downloadTitle(status).toString());
    if (isTooLarge)
        sayFault(IndexFault::WrongSize);
    if (isOver)
        endInstall(false);
}

void webbox::takeIndex(const QByteArray &index)
{
    m_hasIndex = true;
    const auto parsed = StoreIndex::parse(index);
    const IndexedPackage *package
        = parsed ? parsed->packageAt(m_use.addresses.pathOf(m_source.address)) : nullptr;
    if (package != nullptr)
        m_named = *package;
    if (m_named)
        m_use.transfers.setLargest(m_named->size);
    installWhenReady();
}

void webbox::installWhenReady()
{
    if (!m_hasPackage || !m_hasIndex)
        return;
    m_hasPackage = false;
    const bool isDone = install();
    m_use.view.setCaption(downloadTitle(DownloadStatus::Complete).toString());
    endInstall(isDone);
}

void webbox::endInstall(bool isDone)
{
    m_isInstalling = false;
    m_named.reset();
    if (isDone) {
        Q_EMIT installed();
        showApps();
    } else {
        m_failed = m_attempt;
        m_use.view.setFailed(m_attempt.keyword);
        Q_EMIT failed(m_attempt.keyword);
    }
    if (const auto then = std::exchange(m_whenUpdated, {}))
        then(isDone);
}

bool webbox::install()
{
    const IndexFault fault = m_named ? m_package.faultOf(m_currentName, *m_named)
        : m_use.addresses.isSigned() ? IndexFault::NotNamed
                                     : IndexFault::None;
    InstallResult result;
    if (fault == IndexFault::None) {
        const bool isAnew = m_whenUpdated || m_use.installer.isAside(m_currentName);
        std::optional<PackageOrigin> origin;
        if (m_named && m_use.addresses.isSigned())
            origin = PackageOrigin{m_named->path, m_named->version, m_named->checksum, m_named->sheet};
        result = m_use.installer.install({.path = m_package.path(m_currentName),
                                             .keyword = m_currentName,
                                             .carried = isAnew ? CarriedFiles::UsersOwn : CarriedFiles::All,
                                             .place = LibraryChange::Place::End,
                                             .origin = origin},
            [this](const QString &keyword) {
                if (!m_whenUpdated) // whose app is listed
                    m_use.host.addApp(keyword);
            });
    }
    m_use.installer.putBack();
    m_package.deleteAll(m_currentName);
    if (fault != IndexFault::None)
        sayFault(fault);
    else if (!result)
        sayFailed(result);
    else if (!m_whenUpdated)
        sayFixed(u"installed successfully"_s);
    return fault == IndexFault::None && result;
}

void webbox::sayFixed(const QString &text) const
{
    m_use.host.showMessage({.text = text, .systemModal = true, .meaning = meaningOfFixed(text)});
}

void webbox::sayFailed(const InstallResult &result)
{
    sayWhy(result.message());
}

void webbox::sayWhy(const QString &error)
{
    m_use.host.showMessage({.text = error,
        .icon = MessageIcon::Critical,
        .systemModal = true,
        .meaning = meaningOfFixed(error)});
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
