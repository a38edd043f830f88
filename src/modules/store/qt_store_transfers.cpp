#include "modules/store/qt_store_transfers.h"

#include <QNetworkReply>
#include <QNetworkRequest>

namespace plum {

namespace {

constexpr auto indexPatience = std::chrono::seconds(15);
constexpr qint64 largestIndex = qint64(64) << 20; // bytes

} // namespace

QtStoreTransfers::QtStoreTransfers(const Paths &paths, TextCodec &codec)
    : WinHttpDown1(paths, codec)
{
    connect(&WinHttpDown1, &WinHttpDown::Status, this, &StoreTransfers::Status);
    connect(&WinHttpDown1, &WinHttpDown::Progress, this, &StoreTransfers::Progress);
}

void QtStoreTransfers::fetchIndex(const QUrl &address)
{
    if (QNetworkReply *earlier = m_index) {
        earlier->disconnect(this);
        earlier->abort();
        earlier->deleteLater();
    }
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setTransferTimeout(std::chrono::milliseconds(indexPatience).count());
    QNetworkReply *reply = m_network.get(request);
    m_index = reply;
    connect(reply, &QNetworkReply::downloadProgress, this, [reply](qint64 received) {
        if (received > largestIndex)
            reply->abort();
    });
    connect(reply, &QNetworkReply::finished, this, [this, reply] {
        reply->deleteLater();
        const bool isThere = reply->error() == QNetworkReply::NoError;
        Q_EMIT indexArrived(isThere ? reply->readAll() : QByteArray());
    });
}

} // namespace plum
