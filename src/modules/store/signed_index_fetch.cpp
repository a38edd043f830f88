#include "modules/store/signed_index_fetch.h"

#include "modules/store/remembered_files.h"
#include "transport/content_decoding.h"

namespace plum {

namespace {

constexpr int ok = 200; // the answer's status

} // namespace

SignedIndexFetch::SignedIndexFetch()
{
    connect(&m_exchange, &HttpExchange::arrived, this, &SignedIndexFetch::takePiece);
    connect(&m_exchange, &HttpExchange::ended, this, &SignedIndexFetch::takeAnswer);
}

void SignedIndexFetch::start(const SignedStore &store, std::chrono::milliseconds whole)
{
    m_exchange.stop();
    m_store = store;
    m_deadline.setRemainingTime(whole);
    m_trusted.emplace(store.keys, rememberedFiles(store.remembered), QDateTime::currentDateTimeUtc());
    // The answer comes from the event loop, whatever it is.
    QMetaObject::invokeMethod(this, &SignedIndexFetch::fetchNext, Qt::QueuedConnection);
}

void SignedIndexFetch::fetchNext()
{
    if (!m_trusted || m_exchange.isRunning())
        return;
    const auto wanted = m_trusted->wanted();
    if (!wanted) {
        finish();
        return;
    }
    QUrl address(m_store.base);
    address.setPath(m_store.base.path() + wanted->name);
    m_arrived.clear();
    // 0 would be for ever.
    const auto left = std::max(m_deadline.remainingTimeAsDuration(), std::chrono::nanoseconds(1'000'000));
    m_exchange.start({.url = address,
        .headers = {{"Accept-Encoding", "gzip, deflate"}, {"Cache-Control", "no-cache"}},
        .whole = std::chrono::duration_cast<std::chrono::milliseconds>(left)});
}

void SignedIndexFetch::takePiece(const QByteArray &piece)
{
    // A page about what is missing may be of any length.
    if (m_exchange.answer().status() != ok)
        return giveUpFile();
    m_arrived += piece;
    if (m_arrived.size() <= m_trusted->wanted()->largest)
        return;
    m_exchange.stop();
    m_trusted->tooLarge();
    finish();
}

void SignedIndexFetch::takeAnswer(HttpExchange::End how)
{
    const HttpAnswer &answer = m_exchange.answer();
    if (how == HttpExchange::End::TooSlow) {
        end();
        return;
    }
    if (how != HttpExchange::End::Complete || answer.status() != ok)
        return giveUpFile();
    if (const auto content
        = decodedContent(answer.header("Content-Encoding"), m_arrived, m_trusted->wanted()->largest)) {
        m_trusted->take(*content);
    } else {
        m_trusted->tooLarge();
    }
    fetchNext();
}

void SignedIndexFetch::giveUpFile()
{
    m_exchange.stop();
    m_trusted->missing();
    fetchNext();
}

void SignedIndexFetch::finish()
{
    const TrustedStore trusted = std::move(*m_trusted);
    m_trusted.reset();
    rememberFiles(m_store.remembered, trusted.believed());
    Q_EMIT ended(trusted.fault(), trusted.index());
}

void SignedIndexFetch::end()
{
    if (!m_trusted)
        return;
    m_exchange.stop();
    rememberFiles(m_store.remembered, m_trusted->believed());
    m_trusted.reset();
    Q_EMIT ended(IndexFault::NotThere, {});
}

} // namespace plum
