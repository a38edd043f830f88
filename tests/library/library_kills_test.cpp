#include "library/library_bench.h"

#include "support/dice.h"

#include <QDateTime>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <map>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::packageOf;
using recording::writeBytes;

namespace {

// Everything that a user can tell of a library: the list, and every file below the folder of apps.
struct Snapshot
{
    QStringList list;
    std::map<QString, QByteArray> files;

    bool operator==(const Snapshot &) const = default;
};

struct Operation
{
    const char *name;
    std::function<void()> run;
};

class LibraryKillsTest : public ::testing::Test, protected recording::LibraryBench
{
protected:
    // A library with apps of all origins; the same at each call.
    void build()
    {
        QDir(folder.path() + u"/config"_s).removeRecursively();
        lists.List.setStringList({});
        for (const QString &keyword : {u"first"_s, u"last"_s})
            folder.addApp(keyword, "script of " + keyword.toUtf8());
        lists.List.setStringList({u"first"_s, u"last"_s});
        installer.install(
            {.path = m_oldPackage, .keyword = u"calc"_s}, [this](const QString &keyword) { list(keyword); });
        writeBytes(folder.apps(u"calc/notes.txt"_s), "the user's");
    }

    void list(const QString &keyword)
    {
        if (!lists.List.stringList().contains(keyword))
            lists.append(keyword);
        listFile.ConfigSave(lists.List.stringList());
    }

    Snapshot snapshot() const
    {
        Snapshot found{listFile.load(), {}};
        QDirIterator each(folder.apps(), QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot,
            QDirIterator::Subdirectories);
        while (each.hasNext()) {
            const QString path = each.next();
            found.files.emplace(path, QFileInfo(path).isDir() ? QByteArray("folder") : bytesOf(path));
        }
        return found;
    }

    // What changes that are over have left behind. An empty folder is nothing, and the claim of a process
    // that died before its change began is swept up later: it may be another one's that is just beginning.
    QStringList leftovers() const
    {
        return QDir(folder.path() + u"/config/unpacking"_s)
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)
            .filter(QRegularExpression(u"(?<!\\.lock)$"_s));
    }

    // Runs an operation in a process of its own, which is killed after `microseconds`; below 0 it is not.
    bool isKilledAfter(const Operation &operation, qint64 microseconds)
    {
        const pid_t child = fork();
        if (child == 0) {
            operation.run();
            _exit(0);
        }
        if (microseconds >= 0) {
            const timespec pause{0, static_cast<long>(microseconds) * 1000};
            nanosleep(&pause, nullptr);
            kill(child, SIGKILL);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFSIGNALED(status);
    }

    const QString m_oldPackage = folder.addPackage(u"calc1.wfp"_s,
        packageOf({{u"main.wf"_s, "1"}, {u"gone"_s, "x"}, {u"parts/a"_s, QByteArray(20000, 'a')}}));
    const QString m_newPackage = folder.addPackage(u"calc2.wfp"_s,
        packageOf({{u"main.wf"_s, "2"}, {u"parts/a"_s, QByteArray(30000, 'b')}, {u"parts/b"_s, "b"}}));

    const std::vector<Operation> m_operations{
        {"install", [this] { appLibrary.InstallPackage(m_newPackage, u"fresh"_s); }},
        {"install over", [this] { appLibrary.InstallPackage(m_newPackage, u"calc"_s); }},
        {"replace",
            [this] {
                installer.setAside(u"calc"_s);
                installer.install(
                    {.path = m_newPackage, .keyword = u"calc"_s, .carried = CarriedFiles::UsersOwn},
                    [this](const QString &keyword) { list(keyword); });
            }},
        {"create", [this] { appLibrary.CreateApp(u"fresh"_s, QString(20000, u'c')); }},
        {"rename", [this] { appLibrary.RenameApp(u"calc"_s, u"fresh"_s); }},
        {"delete", [this] { appLibrary.DeleteApp(u"calc"_s); }},
        {"save", [this] { appLibrary.SaveApp(u"calc"_s, QString(20000, u's')); }},
    };
};

} // namespace

TEST_F(LibraryKillsTest, twoHundredKillsLeaveTheOldOrTheNewLibrary)
{
    constexpr int killsOfEach = 29;
    recording::Dice dice(20);
    int kills = 0;
    for (const Operation &operation : m_operations) {
        build();
        const Snapshot before = snapshot();
        const auto started = std::chrono::steady_clock::now();
        ASSERT_FALSE(isKilledAfter(operation, -1));
        const auto took = std::chrono::duration_cast<std::chrono::microseconds>(
            std::chrono::steady_clock::now() - started)
                              .count();
        const Snapshot after = snapshot();
        ASSERT_FALSE(before == after) << operation.name;
        ASSERT_EQ(leftovers(), QStringList()) << operation.name;

        for (int i = 0; i < killsOfEach; ++i) {
            build();
            kills += isKilledAfter(operation, dice.below(static_cast<int>(took)));
            LibraryChange::recover(installer.changeNeeds());
            const Snapshot found = snapshot();
            ASSERT_TRUE(found == before || found == after)
                << operation.name << ": " << found.list.join(u", "_s).toStdString();
            ASSERT_EQ(leftovers(), QStringList()) << operation.name;
        }
    }
    // Most of them came in the midst of it.
    EXPECT_GT(kills, killsOfEach);
}

TEST_F(LibraryKillsTest, anAppThatTheStoreReplacesIsBackOnceItsProcessIsGone)
{
    build();
    int report[2];
    ASSERT_EQ(pipe(report), 0);
    const pid_t child = fork();
    if (child == 0) {
        installer.setAside(u"calc"_s);
        if (write(report[1], "x", 1) != 1)
            _exit(1);
        pause();
    }
    char done = 0;
    ASSERT_EQ(read(report[0], &done, 1), 1);
    // A launcher that starts meanwhile leaves the download of a script alone.
    LibraryChange::recover(installer.changeNeeds());
    EXPECT_FALSE(QFile::exists(folder.apps(u"calc"_s)));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    LibraryChange::recover(installer.changeNeeds());
    EXPECT_TRUE(QFile::exists(folder.script(u"calc"_s)));
}

TEST_F(LibraryKillsTest, whatAKilledSaveLeftIsSweptUpAtTheNextStart)
{
    const QString load = folder.path() + u"/config/load/"_s;
    const auto put = [&](const QString &name, int age) {
        writeBytes(load + name, "half");
        QFile file(load + name);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(
            file.setFileTime(QDateTime::currentDateTime().addSecs(-age), QFileDevice::FileModificationTime));
    };
    for (const QString &name : {u"config.txt.aQzrTb"_s, u"set.ini.WpCxkA"_s, u"packages/ab.json.qHHHHH"_s})
        put(name, 120);
    const QStringList kept{
        u"config.txt.LvKdQe"_s, u"config.txt.backup"_s, u"config.txt.Backup"_s, u"config.txt"_s};
    put(kept[0], 0); // somebody may be writing it now
    for (const QString &name : kept.sliced(1))
        put(name, 120);
    LibraryChange::recover(installer.changeNeeds());
    QStringList left = QDir(load).entryList(QDir::Files);
    QStringList expected = kept;
    expected.sort();
    left.sort();
    EXPECT_EQ(left, expected);
    EXPECT_TRUE(QDir(load + u"packages"_s).isEmpty());
}

} // namespace plum
