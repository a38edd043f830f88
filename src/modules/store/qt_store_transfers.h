#pragma once

#include "download/win_http_down.h"
#include "modules/store/signed_index_fetch.h"
#include "store/protocol/store_transfers.h"
#include "transport/http_exchange.h"

namespace plum {

// Transfers over HTTP.
class QtStoreTransfers final : public StoreTransfers
{
    Q_OBJECT

public:
    QtStoreTransfers(const Paths &paths, TextCodec &codec);

    void setTarget(const QString &path) override { WinHttpDown1.setTarget(path); }
    void setUrl(const QString &url) override { WinHttpDown1.setUrl(url); }
    void GetStart() override { WinHttpDown1.GetStart(); }
    void setLargest(qint64 bytes) override { WinHttpDown1.setLargest(bytes); }
    bool wasTooLarge() const override { return WinHttpDown1.wasTooLarge(); }
    bool isBusy() const override { return WinHttpDown1.isBusy(); }
    void fetchIndex(const QUrl &address) override;
    void fetchSignedIndex(const SignedStore &store) override;
    void endIndex() override;

    // How long fetching the index may take as a whole. 15 seconds unless set.
    void setIndexPatience(std::chrono::milliseconds patience);

private:
    void takeIndex(HttpExchange::End how);

    WinHttpDown WinHttpDown1;
    HttpExchange m_indexExchange;
    QByteArray m_index;
    SignedIndexFetch m_signedIndex;
    std::chrono::milliseconds m_indexPatience{15000};
};

} // namespace plum
