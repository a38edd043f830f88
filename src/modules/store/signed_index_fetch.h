#pragma once

#include "signing/trusted_store.h"
#include "store/protocol/store_transfers.h"
#include "transport/http_exchange.h"

#include <QDeadlineTimer>
#include <QObject>

#include <chrono>
#include <optional>

namespace plum {

// Fetches the files that lead to a signed store's newest index, one after the other, and no more of each than
// it can have. Whatever a server does, it ends in time and says what was wrong.
class SignedIndexFetch final : public QObject
{
    Q_OBJECT

public:
    SignedIndexFetch();

    // An earlier one that is still under way ends without a word.
    void start(const SignedStore &store, std::chrono::milliseconds whole);

    // Gives up, and says so. Nothing while none is under way.
    void end();

Q_SIGNALS:
    void ended(plum::IndexFault fault, const QByteArray &index);

private:
    void fetchNext();
    void takePiece(const QByteArray &piece);
    void takeAnswer(HttpExchange::End how);
    void giveUpFile();
    void finish();

    HttpExchange m_exchange;
    SignedStore m_store;
    std::optional<TrustedStore> m_trusted; // while one is under way
    QByteArray m_arrived;
    QDeadlineTimer m_deadline;
};

} // namespace plum
