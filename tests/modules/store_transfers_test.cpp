#include "modules/store/qt_store_transfers.h"

#include "download/byte_server.h"
#include "platform/recording/recording_platform.h"

#include <QEventLoop>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::QtStoreTransfers;
using plum::testing::ByteServer;
using plum::testing::httpAnswer;

namespace {

class StoreIndex : public testing::Test
{
protected:
    // What is reported as the index that `server` has.
    QByteArray fetch()
    {
        QEventLoop loop;
        QByteArray index = "nothing reported";
        QObject::connect(&transfers, &QtStoreTransfers::indexArrived, &loop, [&](const QByteArray &arrived) {
            index = arrived;
            loop.quit();
        });
        transfers.fetchIndex(QUrl(server.url(u"index.json"_s)));
        loop.exec();
        return index;
    }

    ByteServer server;
    plum::recording::RecordingPaths paths;
    plum::recording::RecordingTextCodec codec;
    QtStoreTransfers transfers{paths, codec};
};

} // namespace

TEST_F(StoreIndex, Arrives)
{
    server.answer({httpAnswer("200 OK", {"Content-Length: 2"}, "{}")});
    EXPECT_EQ(fetch(), "{}");
}

TEST_F(StoreIndex, ThatTricklesIsGivenUpAsAWhole)
{
    transfers.setIndexPatience(std::chrono::milliseconds(500));
    server.trickle("HTTP/1.1 200 OK\r\n\r\n", 20);
    EXPECT_EQ(fetch(), QByteArray());
}

TEST_F(StoreIndex, ThatIsCutOrMissingIsNone)
{
    server.answer({httpAnswer("200 OK", {"Content-Length: 3"}, "{}")});
    server.answer({httpAnswer("404 Not Found", {"Content-Length: 2"}, "{}")});
    EXPECT_EQ(fetch(), QByteArray());
    EXPECT_EQ(fetch(), QByteArray());
}

TEST_F(StoreIndex, ThatIsWaitedForCanBeEnded)
{
    server.answer({{}, ByteServer::Then::Stall});
    int reported = 0;
    QObject::connect(&transfers, &QtStoreTransfers::indexArrived,
        [&](const QByteArray &index) { reported += index.isEmpty(); });
    transfers.endIndex();
    EXPECT_EQ(reported, 0);
    transfers.fetchIndex(QUrl(server.url(u"index.json"_s)));
    transfers.endIndex();
    transfers.endIndex();
    EXPECT_EQ(reported, 1);
}
