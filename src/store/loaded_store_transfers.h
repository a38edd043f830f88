#pragma once

#include "store/protocol/store_transfers.h"

namespace plum {

// The transfers of the module `plum-packages`, which is loaded with the first package. Without the module
// every start ends in "the request could not be sent".
class LoadedStoreTransfers final : public StoreTransfers
{
    Q_OBJECT

public:
    LoadedStoreTransfers(const Paths &paths, TextCodec &codec)
        : m_paths(paths)
        , m_codec(codec)
    {
    }

    void setTarget(const QString &path) override;
    void setUrl(const QString &url) override;
    void GetStart() override;
    void setLargest(qint64 bytes) override;
    bool wasTooLarge() const override { return m_transfers && m_transfers->wasTooLarge(); }
    bool isBusy() const override { return m_transfers && m_transfers->isBusy(); }
    void fetchIndex(const QUrl &address) override;
    void fetchSignedIndex(const SignedStore &store) override;
    void endIndex() override;

private:
    bool load();

    const Paths &m_paths;
    TextCodec &m_codec;
    std::unique_ptr<StoreTransfers> m_transfers;
};

} // namespace plum
