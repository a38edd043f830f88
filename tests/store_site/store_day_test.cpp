// The commands of docs/store.md, run as they stand there, and what a reader of the store makes of the result.

#include "sheet/sheet_json.h"
#include "sheet/sheet_sentences.h"
#include "signing/trusted_store.h"
#include "store_files.h"
#include "store_index/store_index.h"
#include "store_site.h"
#include "support/temporary_files.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

// The blocks of commands in the document, in their order.
QStringList commandsOfTheDay()
{
    QFile document(QStringLiteral(PLUM_DOCS_FOLDER "/store.md"));
    EXPECT_TRUE(document.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(document.readAll());
    static const QRegularExpression block(
        u"```sh\n(.*?)```"_s, QRegularExpression::DotMatchesEverythingOption);
    QStringList blocks;
    for (auto found = block.globalMatch(text); found.hasNext();)
        blocks += found.next().captured(1);
    return blocks;
}

QMap<QString, QByteArray> filesBelow(const QString &folder)
{
    QMap<QString, QByteArray> files;
    for (QDirIterator each(folder, QDir::Files, QDirIterator::Subdirectories); each.hasNext();) {
        const QString path = each.next();
        files.insert(QDir(folder).relativeFilePath(path), readFile(path));
    }
    return files;
}

class StoreDay : public testing::Test
{
protected:
    StoreDay()
    {
        QProcess::execute(u"cp"_s, {u"-r"_s, QStringLiteral(PLUM_APPS), files.folder()});
        environment.insert(
            u"PATH"_s, QFileInfo(QStringLiteral(PLUM_STORE)).path() + u':' + environment.value(u"PATH"_s));
    }

    // What the commands said on standard output.
    QByteArray run(const QString &commands)
    {
        QProcess bash;
        bash.setProcessEnvironment(environment);
        bash.setWorkingDirectory(files.folder());
        bash.start(u"bash"_s, {u"-euc"_s, commands});
        bash.waitForFinished();
        complaints = QString::fromUtf8(bash.readAllStandardError());
        EXPECT_EQ(bash.exitCode(), 0) << qPrintable(commands) << qPrintable(complaints);
        return bash.readAllStandardOutput();
    }

    // Somebody whose Plum was built with this key looks at the store; what was seen before is remembered.
    StoreIndex look(const QDateTime &now = QDateTime::currentDateTimeUtc())
    {
        TrustedStore store({builtIn}, remembered, now);
        while (const auto wanted = store.wanted()) {
            const QByteArray file = readFile(downloads() + wanted->name);
            if (file.isEmpty())
                store.missing();
            else if (file.size() > wanted->largest)
                store.tooLarge();
            else
                store.take(file);
        }
        remembered = store.believed();
        fault = store.fault();
        return StoreIndex::parse(store.index()).value_or(StoreIndex());
    }

    void begin()
    {
        const QByteArray said = run(blocks.value(0));
        ASSERT_TRUE(said.startsWith("PLUM_STORE_ROOT_KEYS=")) << said.constData();
        const auto key = PublicKey::fromHex(said.trimmed().split('=').value(1));
        ASSERT_TRUE(key);
        builtIn = *key;
    }

    QString downloads() const { return files.folder() + u"/store/"_s + downloadFolder; }

    bool isPackage(const IndexedPackage &package) const
    {
        const QByteArray bytes = readFile(downloads() + package.path);
        return bytes.size() == package.size
            && QCryptographicHash::hash(bytes, QCryptographicHash::Sha256) == package.checksum;
    }

    const QStringList blocks = commandsOfTheDay();
    test::TemporaryFiles files;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QString complaints;
    PublicKey builtIn;
    TrustedStore::Files remembered;
    IndexFault fault = IndexFault::None;
};

} // namespace

TEST_F(StoreDay, ItsCommandsDoWhatTheDocumentSays)
{
    ASSERT_EQ(blocks.size(), 5);
    begin();
    StoreIndex index = look();
    ASSERT_EQ(fault, IndexFault::None);
    EXPECT_EQ(index.packages.size(), 3U);
    for (const IndexedPackage &package : index.packages) {
        EXPECT_TRUE(isPackage(package)) << qPrintable(package.name);
        EXPECT_EQ(package.version, u"1"_s);
        EXPECT_FALSE(package.sheet.isEmpty());
    }
    // "hello" shows a tip and does nothing else.
    const auto sheet = sheetFromJson(QJsonDocument::fromJson(index.newest(u"hello"_s)->sheet).object());
    ASSERT_TRUE(sheet);
    const QByteArray page = files.read(u"store/plum/apps/hello/index.html"_s);
    for (const QString &sentence : sentences(*sheet))
        EXPECT_TRUE(page.contains(sentence.toHtmlEscaped().toUtf8())) << qPrintable(sentence);

    run(blocks[1]); // a new version
    index = look();
    ASSERT_EQ(fault, IndexFault::None);
    EXPECT_EQ(index.newest(u"hello"_s)->version, u"2"_s);
    EXPECT_EQ(index.newest(u"note"_s)->version, u"1"_s);
    ASSERT_EQ(index.older.size(), 1U);
    const IndexedPackage before = index.older.front();
    EXPECT_EQ(before.path, u"older/hello/1/hello.wfp"_s);
    EXPECT_TRUE(isPackage(before));
    EXPECT_TRUE(isPackage(*index.newest(u"hello"_s)));
    EXPECT_TRUE(files.read(u"store/plum/apps/hello/index.html"_s)
                    .contains("href=\"/plum/download/older/hello/1/hello.wfp\""));

    run(blocks[2]); // a version taken back
    index = look();
    ASSERT_EQ(fault, IndexFault::None);
    ASSERT_NE(index.revocationOf(before.checksum), nullptr);
    EXPECT_EQ(index.revocationOf(before.checksum)->reason, u"It shows the wrong line."_s);
    EXPECT_EQ(index.revocationOf(index.newest(u"hello"_s)->checksum), nullptr);
    EXPECT_FALSE(files.read(u"store/plum/apps/hello/index.html"_s).contains("older/hello/1"));

    const QByteArray indexKey = files.read(u"keys/index.key"_s);
    const int version = index.version;
    run(blocks[3]); // a key is lost
    EXPECT_NE(files.read(u"keys/index.key"_s), indexKey);
    EXPECT_EQ(files.read(u"keys/index-1.key"_s), indexKey);
    index = look();
    ASSERT_EQ(fault, IndexFault::None);
    EXPECT_GT(index.version, version);

    run(blocks[4]); // a new root key
    look();
    EXPECT_EQ(fault, IndexFault::None);
    EXPECT_EQ(RootFile::parse(SignedFile::parse(remembered.root)->content)->version, 4);

    // Somebody who was away all day, and somebody whose Plum was built in the evening.
    remembered = {};
    look();
    EXPECT_EQ(fault, IndexFault::None);
    builtIn
        = *RootFile::parse(SignedFile::parse(files.read(u"keys/root-4.txt"_s))->content)->root.keys.begin();
    remembered = {};
    look();
    EXPECT_EQ(fault, IndexFault::None);
}

TEST_F(StoreDay, ThatNobodySignsEndsInAWeek)
{
    begin();
    const QDateTime now = QDateTime::currentDateTimeUtc();
    look(now.addDays(6));
    EXPECT_EQ(fault, IndexFault::None);
    look(now.addDays(8));
    EXPECT_EQ(fault, IndexFault::Expired);

    // Signed again the same index is good: it need not come twice.
    environment.insert(u"SOURCE_DATE_EPOCH"_s, QString::number(now.addDays(8).toSecsSinceEpoch()));
    const QByteArray index = remembered.index;
    run(u"plum-store sign store --keys keys"_s);
    look(now.addDays(14));
    EXPECT_EQ(fault, IndexFault::None);
    EXPECT_EQ(remembered.index, index);

    // Before the index ends a new one is made.
    environment.insert(u"SOURCE_DATE_EPOCH"_s, QString::number(now.addDays(60).toSecsSinceEpoch()));
    run(u"plum-store sign store --keys keys"_s);
    look(now.addDays(61));
    EXPECT_EQ(fault, IndexFault::None);
    EXPECT_NE(remembered.index, index);
}

TEST_F(StoreDay, TheSameInputGivesTheSameFiles)
{
    environment.insert(u"SOURCE_DATE_EPOCH"_s, u"1800000000"_s);
    run(u"plum-store keys keys && plum-store apps store && plum-store sign store --keys keys"_s);
    const auto made = filesBelow(files.folder() + u"/store"_s);
    EXPECT_GT(made.size(), 15);
    run(u"plum-store apps store && plum-store sign store --keys keys"_s);
    EXPECT_EQ(filesBelow(files.folder() + u"/store"_s), made);

    // From another folder, with other times.
    run(u"mkdir other && cp -r apps other/ && find other -exec touch -d 2001-02-03 {} + && cd other && "
        "plum-store apps ../again && plum-store sign ../again --keys ../keys"_s);
    EXPECT_EQ(filesBelow(files.folder() + u"/again"_s), made);
}

TEST_F(StoreDay, KeysAreForTheirOwnerAlone)
{
    run(u"plum-store keys keys"_s);
    for (const QString &name : {u"root"_s, u"index"_s, u"timestamp"_s}) {
        const QFileInfo key(files.folder() + u"/keys/"_s + name + u".key"_s);
        EXPECT_EQ(
            key.permissions() & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
            0);
        EXPECT_EQ(key.size(), 65);
    }
    const QByteArray root = files.read(u"keys/root.key"_s);
    run(u"! plum-store keys keys"_s);
    EXPECT_TRUE(complaints.contains("a key that is written over is lost"_L1));
    EXPECT_EQ(files.read(u"keys/root.key"_s), root);
}

TEST_F(StoreDay, TheRootKeyIsNeededForNewKeysAlone)
{
    begin();
    run(u"mv keys/root.key away && plum-store sign store --keys keys"_s);
    look();
    EXPECT_EQ(fault, IndexFault::None);
    run(u"! plum-store rotate keys index"_s);
    EXPECT_TRUE(complaints.contains("a new list of keys takes"_L1)) << qPrintable(complaints);
    run(u"plum-store sign store --keys keys"_s);
    run(u"cp away keys/root.key && ! plum-store rotate keys other && mv keys/index.key away && "
        "! plum-store sign store --keys keys"_s);
    EXPECT_TRUE(complaints.contains("index.key is not there"_L1)) << qPrintable(complaints);
}

TEST_F(StoreDay, AVersionIsOnePackage)
{
    run(uR"(echo '{"version": "1.2"}' >apps/hello/about.json
        plum-store apps store
        printf '// more\r\n' >>apps/hello/main.wf
        ! plum-store apps store)"_s);
    EXPECT_TRUE(complaints.contains("there is a version 1.2 already"_L1)) << qPrintable(complaints);
    const auto index = indexOf(files.folder() + u"/store"_s);
    EXPECT_EQ(index->newest(u"hello"_s)->version, u"1.2"_s);
    EXPECT_TRUE(isPackage(*index->newest(u"hello"_s)));
    run(uR"(echo '{"version": "1.3"}' >apps/hello/about.json; plum-store apps store)"_s);
    EXPECT_EQ(indexOf(files.folder() + u"/store"_s)->older.front().version, u"1.2"_s);
    run(uR"(echo '{"version": "1/4"}' >apps/hello/about.json; ! plum-store apps store)"_s);
    EXPECT_EQ(indexOf(files.folder() + u"/store"_s)->newest(u"hello"_s)->version, u"1.3"_s);
}

TEST_F(StoreDay, AnAppThatIsWithdrawnIsKeptAsAnOlderOne)
{
    run(u"plum-store apps store && rm -r apps/note && plum-store apps store"_s);
    const auto index = indexOf(files.folder() + u"/store"_s);
    EXPECT_EQ(index->newest(u"note"_s), nullptr);
    ASSERT_EQ(index->older.size(), 1U);
    EXPECT_TRUE(isPackage(index->older.front()));
    EXPECT_FALSE(QFileInfo::exists(downloads() + u"note.wfp"_s));
}

TEST_F(StoreDay, AnAppWithAnErrorIsNotPublishedAndTheOneFromBeforeStays)
{
    run(u"plum-store apps store && printf 'window.shake \"1\"\\r\\n' >apps/hello/main.wf && "
        "! plum-store apps store"_s);
    EXPECT_TRUE(complaints.contains("window has no command \"shake\""_L1)) << qPrintable(complaints);
    EXPECT_TRUE(complaints.contains("a script with an error is not published"_L1));
    const auto index = indexOf(files.folder() + u"/store"_s);
    ASSERT_NE(index->newest(u"hello"_s), nullptr);
    EXPECT_TRUE(isPackage(*index->newest(u"hello"_s)));
}

TEST_F(StoreDay, AnAppWhoseNewestVersionWasTakenBackIsNotOffered)
{
    run(u"plum-store apps store && plum-store revoke store hello --reason '<b>It is wrong.' && plum-store apps store"_s);
    const QByteArray page = files.read(u"store/plum/apps/hello/index.html"_s);
    EXPECT_FALSE(page.contains("hello.wfp"));
    EXPECT_TRUE(page.contains("This version was taken back. &lt;b&gt;It is wrong."));
    EXPECT_FALSE(files.read(u"store/plum/workflow_in/index.html"_s).contains("hello.wfp"));
    run(u"! plum-store revoke store nobody; ! plum-store revoke store hello 7"_s);
}
