#pragma once

#include "download/win_http_down.h"
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
    bool isBusy() const override { return WinHttpDown1.isBusy(); }
    void fetchIndex(const QUrl &address) override;
    void endIndex() override;

    // How long fetching the index may take as a whole. 15 seconds unless set.
    void setIndexPatience(std::chrono::milliseconds patience) { m_indexPatience = patience; }

private:
    void takeIndex(HttpExchange::End how);

    WinHttpDown WinHttpDown1;
    HttpExchange m_indexExchange;
    QByteArray m_index;
    std::chrono::milliseconds m_indexPatience{15000};
};

} // namespace plum
