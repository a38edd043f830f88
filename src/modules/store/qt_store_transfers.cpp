#include "modules/store/qt_store_transfers.h"

#include "transport/content_decoding.h"

namespace plum {

namespace {

constexpr qint64 largestIndex = qint64(64) << 20; // bytes

} // namespace

QtStoreTransfers::QtStoreTransfers(const Paths &paths, TextCodec &codec)
    : WinHttpDown1(paths, codec)
{
    connect(&WinHttpDown1, &WinHttpDown::Status, this, &StoreTransfers::Status);
    connect(&WinHttpDown1, &WinHttpDown::Progress, this, &StoreTransfers::Progress);
    connect(&m_indexExchange, &HttpExchange::arrived, this, [this](const QByteArray &piece) {
        m_index += piece;
        if (m_index.size() > largestIndex)
            endIndex();
    });
    connect(&m_indexExchange, &HttpExchange::ended, this, &QtStoreTransfers::takeIndex);
    connect(&m_signedIndex, &SignedIndexFetch::ended, this, &StoreTransfers::signedIndexArrived);
}

void QtStoreTransfers::setIndexPatience(std::chrono::milliseconds patience)
{
    m_indexPatience = patience;
}

void QtStoreTransfers::fetchSignedIndex(const SignedStore &store)
{
    m_signedIndex.start(store, m_indexPatience);
}

void QtStoreTransfers::fetchIndex(const QUrl &address)
{
    m_index.clear();
    m_indexExchange.start(
        {.url = address, .headers = {{"Accept-Encoding", "gzip, deflate"}}, .whole = m_indexPatience});
}

void QtStoreTransfers::endIndex()
{
    m_signedIndex.end();
    if (!m_indexExchange.isRunning())
        return;
    m_indexExchange.stop();
    m_index.clear();
    Q_EMIT indexArrived({});
}

void QtStoreTransfers::takeIndex(HttpExchange::End how)
{
    constexpr int ok = 200;
    const HttpAnswer &answer = m_indexExchange.answer();
    const QByteArray index = std::exchange(m_index, {});
    const bool isThere = how == HttpExchange::End::Complete && answer.status() == ok;
    Q_EMIT indexArrived(isThere
            ? decodedContent(answer.header("Content-Encoding"), index, largestIndex).value_or(QByteArray())
            : QByteArray());
}

} // namespace plum
