#include "library/library_bench.h"

#include "library/settings_file.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::writeBytes;

namespace {

// The library while its disk, its rights or its process are taken away.
class LibraryStrainTest : public testing::Test, protected recording::LibraryBench
{
protected:
    // Creates, saves, renames and deletes apps for ever, and reports each operation with a byte.
    [[noreturn]] void keepOperating(int report)
    {
        for (int i = 0;; ++i) {
            const QString script = QString(20000, i % 2 == 0 ? u'a' : u'b');
            const QString keyword = u"new%1"_s.arg(i);
            const bool done[]
                = {appLibrary.CreateApp(keyword, script), appLibrary.SaveApp(u"kept7"_s, script),
                    appLibrary.RenameApp(keyword, keyword + u"x"_s), appLibrary.DeleteApp(keyword + u"x"_s)};
            for (const bool each : done) {
                if (!each || write(report, "o", 1) != 1)
                    _exit(1);
            }
        }
    }

    QStringList said() const { return log.lines(); }
};

// The largest file that this process may write, in bytes, while this object lives.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        // Beyond the limit a write fails, as on a full disk, once the signal is ignored.
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limited{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

// Makes a program folder read-only, also for root, who becomes somebody else meanwhile.
class ReadOnly
{
public:
    explicit ReadOnly(const QString &folder)
        : m_folder(QFile::encodeName(folder))
    {
        if (geteuid() == 0) {
            constexpr uid_t nobody = 65534;
            // A temporary folder is closed to everybody else.
            m_ready = std::system(("chmod -R a+rX,a-w '" + m_folder + "'").constData()) == 0
                && seteuid(nobody) == 0;
        } else {
            m_ready = std::system(("chmod -R a-w '" + m_folder + "'").constData()) == 0;
        }
    }
    ~ReadOnly()
    {
        if (getuid() == 0 && seteuid(0) != 0)
            std::abort();
        if (std::system(("chmod -R u+w '" + m_folder + "'").constData()) != 0)
            std::abort();
    }
    Q_DISABLE_COPY_MOVE(ReadOnly)

    bool isReady() const { return m_ready; }

private:
    QByteArray m_folder;
    bool m_ready;
};

} // namespace

TEST_F(LibraryStrainTest, aKillDuringOperationsLosesNoLineAndNoScript)
{
    QStringList kept;
    for (int i = 0; i < 500; ++i)
        kept += u"kept%1"_s.arg(i);
    const QByteArray first(20000, 'a');
    const QByteArray second(20000, 'b');
    folder.addApp(u"kept7"_s, first);
    lists.List.setStringList(kept);
    listFile.ConfigSave(kept);

    int operations = 0;
    for (int kill = 0; kill < 20; ++kill) {
        lists.List.setStringList(kept);
        int report[2];
        ASSERT_EQ(pipe(report), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0)
            keepOperating(report[1]);
        close(report[1]);
        for (int i = 0; i < 10 + kill; ++i) {
            char done = 0;
            ASSERT_EQ(read(report[0], &done, 1), 1);
            ++operations;
        }
        // The child is in the midst of its next operation now.
        ::kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        close(report[0]);

        const QStringList found = listFile.load();
        ASSERT_EQ(found.first(500), kept);
        ASSERT_LE(found.size(), 501);
        ASSERT_TRUE(bytesOf(folder.configTxt()).endsWith("\r\n"));
        const QByteArray script = bytesOf(folder.script(u"kept7"_s));
        ASSERT_TRUE(script == first || script == second) << script.size();
        ASSERT_TRUE(QDir(folder.apps()).removeRecursively());
        folder.addApp(u"kept7"_s, first);
    }
    EXPECT_GE(operations, 200);
}

TEST_F(LibraryStrainTest, filesThatCannotGrowKeepTheOldScriptOrderAndSettings)
{
    ASSERT_TRUE(appLibrary.CreateApp(u"note"_s, u"old"_s));
    SettingsFile settings(paths, codec);
    settings.WriteSetting(u"hotkey"_s, u"hotkey"_s, u"Alt+Z"_s);
    const QByteArray before = bytesOf(folder.setIni());
    log.clear();
    {
        const FileSizeLimit limit(2);
        EXPECT_FALSE(appLibrary.SaveApp(u"note"_s, u"a longer script"_s));
        EXPECT_FALSE(appLibrary.CreateApp(u"other"_s, u"a longer script"_s));
        EXPECT_TRUE(appLibrary.RenameApp(u"note"_s, u"letter"_s));
        settings.WriteSetting(u"hotkey"_s, u"hotkey"_s, u"Ctrl+Q"_s);
    }
    EXPECT_EQ(said(), QStringList({u"message! Error"_s, u"message! Error"_s, u"message! Successfully"_s}));
    EXPECT_EQ(bytesOf(folder.script(u"letter"_s)), "old");
    EXPECT_FALSE(QFile::exists(folder.apps(u"other"_s)));
    EXPECT_EQ(bytesOf(folder.configTxt()), "note\r\n");
    EXPECT_EQ(bytesOf(folder.setIni()), before);
    // What could not be saved is saved with the next change.
    EXPECT_TRUE(appLibrary.CreateApp(u"other"_s, {}));
    EXPECT_EQ(bytesOf(folder.configTxt()), "letter\r\nother\r\n");
}

TEST_F(LibraryStrainTest, aReadOnlyProgramFolderIsReadAndNeverChanged)
{
    folder.addApp(u"note"_s, "old");
    folder.addApp(u"mail"_s, "old");
    writeBytes(folder.configTxt(), "note\r\nmail\r\n");
    writeBytes(folder.setIni(), "[hotkey]\r\nhotkey=Alt+Z\r\n");
    SettingsFile settings(paths, codec);
    {
        const ReadOnly rights(folder.path());
        if (!rights.isReady())
            GTEST_SKIP() << "rights cannot be taken away here";
        load();
        EXPECT_EQ(lists.List.stringList(), QStringList({u"note"_s, u"mail"_s}));
        EXPECT_FALSE(appLibrary.CreateApp(u"new"_s, {}));
        EXPECT_FALSE(appLibrary.SaveApp(u"note"_s, u"new"_s));
        EXPECT_FALSE(appLibrary.RenameApp(u"note"_s, u"letter"_s));
        EXPECT_FALSE(appLibrary.DeleteApp(u"note"_s));
        settings.WriteSetting(u"hotkey"_s, u"hotkey"_s, u"Ctrl+Q"_s);
        listFile.ConfigSave({u"mail"_s});
        EXPECT_EQ(settings.ReadSetting(u"hotkey"_s, u"hotkey"_s), u"Alt+Z"_s);
    }
    EXPECT_EQ(said(),
        QStringList({u"message! Error"_s, u"message! Error"_s, u"message! Error"_s,
            u"ask 确定删除?|提示|note"_s, u"message! Error"_s}));
    EXPECT_EQ(lists.List.stringList(), QStringList({u"note"_s, u"mail"_s}));
    EXPECT_EQ(bytesOf(folder.script(u"note"_s)), "old");
    EXPECT_EQ(bytesOf(folder.configTxt()), "note\r\nmail\r\n");
    EXPECT_EQ(bytesOf(folder.setIni()), "[hotkey]\r\nhotkey=Alt+Z\r\n");
}

} // namespace plum
