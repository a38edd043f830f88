#include "kit/app_package.h"
#include "kit_process.h"
#include "support/temporary_files.h"

#include <QDateTime>
#include <QFile>

#include <gtest/gtest.h>

namespace plum::kit {
namespace {

using namespace Qt::StringLiterals;
using test::KitRun;
using test::runKit;

class KitApps : public testing::Test
{
protected:
    // The app `hello`, with files that do not belong into a package.
    void makeHello(const QByteArray &script)
    {
        files.write(u"hello/main.wf"_s, script);
        files.write(u"hello/.main.wf"_s, "old");
        files.write(u"hello/data/notes.txt"_s, "notes");
        files.write(u"hello/hello.wfp"_s, "PK");
        files.write(u"hello/main.wf~"_s, "older");
        QFile::link(u"/etc/hostname"_s, files.folder() + u"/hello/name"_s);
    }

    KitRun pack(const QString &target)
    {
        return runKit(
            {u"pack"_s, files.folder() + u"/hello"_s, u"--output"_s, files.folder() + u'/' + target});
    }

    test::TemporaryFiles files;
};

TEST_F(KitApps, packWhatBelongsToTheAppAndSayWhatDoesNot)
{
    makeHello("mouse.click\r\n");
    const KitRun packed = pack(u"hello.wfp"_s);
    EXPECT_EQ(packed.status, 0) << packed.errors.toStdString();
    EXPECT_EQ(packed.output,
        files.folder()
            + u"/hello.wfp: 2 files\nleft out: .main.wf (hidden)\nleft out: hello.wfp (a package itself)\n"
              "left out: main.wf~ (an old copy)\nleft out: name (a link)\n"_s);
    QString problem;
    const auto package = packApp(files.folder() + u"/hello"_s, problem);
    ASSERT_TRUE(package) << problem.toStdString();
    EXPECT_EQ(package->archive.files, QStringList({u"data/notes.txt"_s, u"main.wf"_s}));
    EXPECT_EQ(package->archive.content, files.read(u"hello.wfp"_s));
}

TEST_F(KitApps, packTheSameBytesFromFilesOfAnotherTime)
{
    makeHello("mouse.click\r\n");
    ASSERT_EQ(pack(u"first.wfp"_s).status, 0);
    QFile script(files.folder() + u"/hello/main.wf"_s);
    ASSERT_TRUE(script.open(QIODevice::ReadWrite));
    ASSERT_TRUE(
        script.setFileTime(QDateTime(QDate(2001, 2, 3), QTime(4, 5)), QFileDevice::FileModificationTime));
    script.close();
    ASSERT_EQ(pack(u"second.wfp"_s).status, 0);
    EXPECT_FALSE(files.read(u"first.wfp"_s).isEmpty());
    EXPECT_EQ(files.read(u"first.wfp"_s), files.read(u"second.wfp"_s));
}

TEST_F(KitApps, doNotPackAScriptWithAnError)
{
    makeHello("mouse.klick\r\n");
    const KitRun refused = pack(u"hello.wfp"_s);
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.errors.contains(u"main.wf:1:7: error: "_s)) << refused.errors.toStdString();
    EXPECT_TRUE(files.read(u"hello.wfp"_s).isEmpty());
}

TEST_F(KitApps, packNoFolderThatIsNoApp)
{
    files.write(u"empty/notes.txt"_s, "x");
    const KitRun refused = runKit({u"pack"_s, files.folder() + u"/empty"_s});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.errors, u"plumkit: %1/empty has no main.wf\n"_s.arg(files.folder()));
}

TEST_F(KitApps, beginWithAGuideAndCrLf)
{
    const KitRun made = runKit({u"new"_s, u"greet"_s, u"--in"_s, files.folder()});
    EXPECT_EQ(made.status, 0) << made.errors.toStdString();
    EXPECT_EQ(made.output, files.folder() + u"/greet/main.wf\n"_s);
    EXPECT_EQ(files.read(u"greet/main.wf"_s),
        "//guide:greet says hello\r\n//edition:2\r\nos.tips \"Hello from greet.\"\r\n");
    EXPECT_EQ(runKit({u"check"_s, files.folder() + u"/greet"_s}).status, 0);
    EXPECT_EQ(runKit({u"new"_s, u"greet"_s, u"--in"_s, files.folder()}).status, 2);
    EXPECT_EQ(runKit({u"new"_s, u"a:b"_s, u"--in"_s, files.folder()}).status, 2);
}

} // namespace
} // namespace plum::kit
