#pragma once

#include "download/win_http_down.h"
#include "store/protocol/store_transfers.h"

#include <QNetworkAccessManager>
#include <QPointer>

namespace plum {

// Transfers on Qt's HTTP.
class QtStoreTransfers final : public StoreTransfers
{
    Q_OBJECT

public:
    QtStoreTransfers(const Paths &paths, TextCodec &codec);

    void setTarget(const QString &path) override { WinHttpDown1.setTarget(path); }
    void setUrl(const QString &url) override { WinHttpDown1.setUrl(url); }
    void GetStart() override { WinHttpDown1.GetStart(); }
    bool isBusy() const override { return WinHttpDown1.isBusy(); }
    void fetchIndex(const QUrl &address) override;

private:
    WinHttpDown WinHttpDown1;
    QNetworkAccessManager m_network;
    QPointer<QNetworkReply> m_index;
};

} // namespace plum
