#include "store/loaded_store_transfers.h"

#include "platform/loaded_module.h"

namespace plum {

using namespace Qt::StringLiterals;

bool LoadedStoreTransfers::load()
{
    if (m_transfers)
        return true;
    LoadedModule library(u"plum-packages"_s);
    auto *module = qobject_cast<StoreModule *>(library.object());
    if (module == nullptr)
        return false;
    m_transfers = module->createTransfers(m_paths, m_codec);
    connect(m_transfers.get(), &StoreTransfers::Status, this, &StoreTransfers::Status);
    connect(m_transfers.get(), &StoreTransfers::Progress, this, &StoreTransfers::Progress);
    connect(m_transfers.get(), &StoreTransfers::indexArrived, this, &StoreTransfers::indexArrived);
    connect(
        m_transfers.get(), &StoreTransfers::signedIndexArrived, this, &StoreTransfers::signedIndexArrived);
    return true;
}

void LoadedStoreTransfers::setTarget(const QString &path)
{
    if (load())
        m_transfers->setTarget(path);
}

void LoadedStoreTransfers::setUrl(const QString &url)
{
    if (load())
        m_transfers->setUrl(url);
}

void LoadedStoreTransfers::GetStart()
{
    if (load())
        m_transfers->GetStart();
    else
        Q_EMIT Status(DownloadStatus::NotSent);
}

void LoadedStoreTransfers::setLargest(qint64 bytes)
{
    if (load())
        m_transfers->setLargest(bytes);
}

void LoadedStoreTransfers::fetchIndex(const QUrl &address)
{
    if (load())
        m_transfers->fetchIndex(address);
    else
        Q_EMIT indexArrived({});
}

void LoadedStoreTransfers::fetchSignedIndex(const SignedStore &store)
{
    if (load())
        m_transfers->fetchSignedIndex(store);
    else
        Q_EMIT signedIndexArrived(IndexFault::NotThere, {});
}

void LoadedStoreTransfers::endIndex()
{
    if (m_transfers)
        m_transfers->endIndex();
}

} // namespace plum
