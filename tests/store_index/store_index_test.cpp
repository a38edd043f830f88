#include "store_index/store_index.h"

#include "store_index/role_files.h"
#include "store_index/signed_file.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

const QByteArray checksum(32, '\x7e');
const QDateTime moment(QDate(2026, 11, 21), QTime(8, 0), Qt::UTC);

PublicKey key(char byte)
{
    return PublicKey::fromHex(QByteArray(32, byte).toHex()).value();
}

StoreIndex example()
{
    StoreIndex index{.version = 3, .expires = moment};
    index.packages.push_back({.name = u"notes"_s,
        .version = u"1.3"_s,
        .path = u"notes.wfp"_s,
        .size = 1234,
        .checksum = checksum,
        .edition = 2,
        .sheet = R"({"reads":["notes.txt"]})"});
    index.older.push_back({.name = u"notes"_s,
        .version = u"1.2"_s,
        .path = u"older/notes/1.2/notes.wfp"_s,
        .size = 1230,
        .checksum = QByteArray(32, '\x01')});
    index.revoked.push_back({QByteArray(32, '\x02'), u"It deletes too much."_s});
    return index;
}

QByteArray replaced(QByteArray json, const QByteArray &what, const QByteArray &with)
{
    EXPECT_TRUE(json.contains(what)) << what.constData();
    return json.replace(what, with);
}

} // namespace

TEST(StoreIndex, IsReadAsItIsWritten)
{
    const StoreIndex index = example();
    const auto read = StoreIndex::parse(index.toJson());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->toJson(), index.toJson());
    EXPECT_EQ(read->version, 3);
    EXPECT_EQ(read->expires, moment);
    EXPECT_EQ(read->packageAt(u"notes.wfp"_s)->version, u"1.3"_s);
    EXPECT_EQ(read->packageAt(u"notes.wfp"_s)->edition, 2);
    EXPECT_EQ(read->packageAt(u"notes.wfp"_s)->sheet, R"({"reads":["notes.txt"]})");
    EXPECT_EQ(read->packageAt(u"older/notes/1.2/notes.wfp"_s)->version, u"1.2"_s);
    EXPECT_EQ(read->packageAt(u"chess.wfp"_s), nullptr);
    EXPECT_EQ(read->newest(u"notes"_s)->version, u"1.3"_s);
    EXPECT_EQ(read->revocationOf(QByteArray(32, '\x02'))->reason, u"It deletes too much."_s);
    EXPECT_EQ(read->revocationOf(checksum), nullptr);
}

TEST(StoreIndex, ThatIsNoneIsNotRead)
{
    const QByteArray good = example().toJson();
    for (const auto &[what, with] : std::initializer_list<std::pair<QByteArray, QByteArray>>{
             {"\"index\"", "\"timestamp\""}, {"\"version\": 3", "\"version\": 0"},
             {"\"version\": 3", "\"version\": 3.5"}, {"\"version\": 3", "\"version\": \"3\""},
             {"\"version\": 3", "\"version\": 1e300"}, {"2026-11-21T08:00:00Z", "2026-11-21"},
             {"2026-11-21T08:00:00Z", "2026-13-21T08:00:00Z"}, {"1234", "-1"}, {"1234", "12.5"},
             {"1234", "\"\""}, {"7e7e", "7E7e"}, {"7e7e", "7e"}, {"\"edition\": 2", "\"edition\": \"2\""},
             {"\"notes.wfp\"", "\"older/notes/1.2/notes.wfp\""}, {"\"notes.wfp\"", "\"../notes.wfp\""},
             {"\"notes.wfp\"", "\"/notes.wfp\""}, {"\"notes.wfp\"", "\"a//notes.wfp\""},
             {"\"notes.wfp\"", "\"a\\\\notes.wfp\""}, {"\"notes.wfp\"", "\"notes.zip\""}, {"0202", "02"}})
        EXPECT_FALSE(StoreIndex::parse(replaced(good, what, with))) << what.constData() << with.constData();
    for (const QByteArray &bad :
        {QByteArray(), QByteArray("[]"), QByteArray("{}"), QByteArray(R"({"type":"index"})"),
            QByteArray(R"({"type":"index","packages":{}})"), good.chopped(5)})
        EXPECT_FALSE(StoreIndex::parse(bad)) << bad.constData();
}

TEST(RoleFiles, AreReadAsTheyAreWritten)
{
    const RootFile root{.version = 2,
        .expires = moment,
        .root = {{key(1), key(2)}, 2},
        .index = {{key(3)}, 1},
        .timestamp = {{key(4)}, 1}};
    const auto readRoot = RootFile::parse(root.toJson());
    ASSERT_TRUE(readRoot);
    EXPECT_EQ(readRoot->toJson(), root.toJson());
    EXPECT_EQ(readRoot->root, root.root);
    EXPECT_EQ(readRoot->expires, moment);

    const TimestampFile timestamp{
        .version = 5, .expires = moment, .indexVersion = 3, .indexSize = 99, .indexChecksum = checksum};
    const auto readTimestamp = TimestampFile::parse(timestamp.toJson());
    ASSERT_TRUE(readTimestamp);
    EXPECT_EQ(readTimestamp->toJson(), timestamp.toJson());
    EXPECT_FALSE(TimestampFile::parse(root.toJson()));
    EXPECT_FALSE(RootFile::parse(timestamp.toJson()));
}

TEST(RoleFiles, AThresholdIsReachableAndNoKeyStandsTwice)
{
    const RootFile root{
        .expires = moment, .root = {{key(1), key(2)}, 2}, .index = {{key(3)}, 1}, .timestamp = {{key(4)}, 1}};
    const QByteArray good = root.toJson();
    EXPECT_TRUE(RootFile::parse(good));
    EXPECT_FALSE(RootFile::parse(replaced(good, "\"threshold\": 2", "\"threshold\": 3")));
    EXPECT_FALSE(RootFile::parse(replaced(good, "\"threshold\": 2", "\"threshold\": 0")));
    EXPECT_FALSE(RootFile::parse(replaced(good, key(2).toHex(), key(1).toHex())));
    EXPECT_FALSE(RootFile::parse(replaced(good, "\"timestamp\"", "\"other\"")));
}

TEST(SignedFile, SignsTheBytesAsTheyStand)
{
    SignedFile file{.signatures = {{key(1), QByteArray(64, 'a')}},
        .content = QByteArray("any\r\n\nbytes\0 at all\n", 20)};
    const auto read = SignedFile::parse(file.toBytes());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->content, file.content);
    ASSERT_EQ(read->signatures.size(), 1U);
    EXPECT_EQ(read->signatures.front().key, key(1));
    EXPECT_EQ(read->signatures.front().bytes, QByteArray(64, 'a'));
}

TEST(SignedFile, ThatIsNoneIsNotRead)
{
    SignedFile file{.signatures = {{key(1), QByteArray(64, '\x5a')}}, .content = "text"};
    const QByteArray good = file.toBytes();
    const QByteArray line = good.split('\n').at(1);
    for (const QByteArray &bad : {QByteArray(), QByteArray("text"), good.first(good.indexOf("\n\n") + 1),
             QByteArray("plum-signed 2\n\ntext"), "plum-signed 1\n" + line + '\n' + line + "\n\ntext",
             replaced(good, line, line.chopped(1)), replaced(good, line, line.toUpper()),
             replaced(good, line, line + " x"), replaced(good, "\n" + line, "\n " + line),
             "plum-signed 1\r\n" + line + "\r\n\r\ntext"})
        EXPECT_FALSE(SignedFile::parse(bad)) << bad.constData();

    file.signatures.clear();
    for (int each = 0; each <= SignedFile::mostSignatures; ++each)
        file.signatures.push_back({key(static_cast<char>(each + 1)), QByteArray(64, 'a')});
    EXPECT_FALSE(SignedFile::parse(file.toBytes()));
    file.signatures.pop_back();
    EXPECT_TRUE(SignedFile::parse(file.toBytes()));
}
