// What the store does with a signed index: asking for it, finding packages in it, saying what is wrong with
// it.

#include "store/webbox.h"

#include "engine/editions/last_edition.h"
#include "library/app_folders.h"
#include "store/download_texts.h"
#include "store/protocol/store_transfers.h"
#include "store/store_host.h"
#include "store/store_view.h"

namespace plum {

using namespace Qt::StringLiterals;

// What comes from elsewhere has to be vouched for; what this computer serves is its user's.
bool webbox::mayBeHad()
{
    if (m_use.addresses.isSigned() || m_use.addresses.isLocal())
        return true;
    sayFault(IndexFault::NotVouched);
    return false;
}

void webbox::fetchSigned(IndexTaker then)
{
    const AppFolders folders(m_use.paths);
    const QString memory = folders.storeMemory() + u'\\' + m_use.addresses.memoryName();
    m_whenIndex = std::move(then);
    m_use.transfers.fetchSignedIndex({.base = m_use.addresses.downloadBase,
        .keys = m_use.addresses.rootKeys,
        .remembered = folders.onDisk(memory)});
}

bool webbox::askIndex(IndexTaker then)
{
    if (isBusy() || !m_use.addresses.isSigned())
        return false;
    fetchSigned(std::move(then));
    return true;
}

void webbox::findNamed(const Source &source, std::function<void(const IndexedPackage &package)> then)
{
    m_use.view.setCaption(downloadTitle(DownloadStatus::HeadersArrived).toString());
    fetchSigned([this, source, then](IndexFault fault, const std::optional<StoreIndex> &index) {
        m_use.view.setCaption({});
        if (!index) {
            sayFault(fault);
            return;
        }
        const IndexedPackage *package = index->packageAt(m_use.addresses.pathOf(source.address));
        if (package == nullptr)
            sayFault(IndexFault::NotNamed);
        else if (const Revocation *revocation = index->revocationOf(package->checksum))
            sayFault(IndexFault::Revoked, revocation->reason);
        else if (package->edition > lastEdition)
            sayFault(IndexFault::LaterEdition);
        else
            then(*package);
    });
}

void webbox::takeSignedIndex(IndexFault fault, const QByteArray &index)
{
    const IndexTaker then = std::exchange(m_whenIndex, {});
    if (!then)
        return;
    const auto parsed = fault == IndexFault::None ? StoreIndex::parse(index) : std::nullopt;
    if (parsed)
        Q_EMIT indexBelieved(*parsed);
    then(fault == IndexFault::None && !parsed ? IndexFault::Damaged : fault, parsed);
}

bool webbox::update(
    const QString &keyword, const IndexedPackage &package, std::function<void(bool isDone)> then)
{
    if (isBusy() || !isUsable(keyword))
        return false;
    m_currentName = keyword;
    m_source = {package.name, m_use.addresses.packageAt(package.path)};
    m_asked.reset();
    m_named = package;
    m_whenUpdated = std::move(then);
    start(InstallFlag::Reinstall);
    return true;
}

void webbox::showApps()
{
    if (m_use.apps)
        m_use.view.setApps(m_use.apps());
}

void webbox::askAnew(const QString &keyword)
{
    if (isBusy() || m_use.host.isAsking() || !m_use.apps)
        return;
    for (const StoreApp &app : m_use.apps()) {
        if (app.keyword != keyword)
            continue;
        m_currentName = keyword;
        m_source = {keyword, m_use.addresses.packageAt(app.path)};
        m_asked.reset();
        askInstall(InstallFlag::Reinstall, keyword);
        return;
    }
}

void webbox::retry()
{
    if (!m_failed || isBusy() || m_use.host.isAsking() || !mayBeHad())
        return;
    const auto again = [this](const Attempt &attempt, const std::optional<IndexedPackage> &named) {
        m_currentName = attempt.keyword;
        m_source = attempt.source;
        m_named = named;
        begin(attempt.mode);
    };
    const Attempt attempt = *m_failed;
    if (!m_use.addresses.isSigned()) {
        again(attempt, {});
        return;
    }
    findNamed(attempt.source, [this, attempt, again](const IndexedPackage &package) {
        if (attempt.named && attempt.named->checksum == package.checksum)
            again(attempt, package);
        else
            offer(attempt.mode, attempt.keyword, attempt.source, package);
    });
}

void webbox::sayFault(IndexFault fault, const QString &reason)
{
    const QString why = indexFaultText(fault);
    sayWhy(u"Error\n\n"_s + (reason.isEmpty() ? why : why + u"\n\n"_s + reason));
}

} // namespace plum
