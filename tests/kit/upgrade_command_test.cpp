#include "kit_process.h"
#include "support/temporary_files.h"

#include <QFile>

#include <gtest/gtest.h>

namespace plum::kit {
namespace {

using namespace Qt::StringLiterals;
using test::KitRun;
using test::runKit;

constexpr auto before = "//guide:Says hello\r\nset.name \"Ann\"\r\nos.tips Hello +?+!+(set.name)\r\n";
constexpr auto after
    = "//guide:Says hello\r\n//edition:2\r\nset.name \"Ann\"\r\nos.tips $\"Hello {name}!\"\r\n";

TEST(KitUpgrade, printsTheScriptAndLeavesTheFileAlone)
{
    test::TemporaryFiles files;
    const QString path = files.write(u"main.wf"_s, before);
    const KitRun run = runKit({u"upgrade"_s, path});
    EXPECT_EQ(run.status, 0) << run.errors.toStdString();
    EXPECT_EQ(run.output, QString::fromLatin1(after));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), before);
}

TEST(KitUpgrade, writesItOverTheFileWhereAsked)
{
    test::TemporaryFiles files;
    const QString path = files.write(u"main.wf"_s, before);
    EXPECT_EQ(runKit({u"upgrade"_s, u"--output"_s, path, path}).status, 0);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), after);
}

TEST(KitUpgrade, namesTheLineThatIsInTheWay)
{
    test::TemporaryFiles files;
    const QString path = files.write(u"main.wf"_s, "mouse.click\r\nmouse.clack\r\n");
    const KitRun run = runKit({u"upgrade"_s, path});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, QString());
    EXPECT_EQ(
        run.errors, u"%1:2:1: there is no command mouse.clack, and edition 1 passes over it\n"_s.arg(path));
    EXPECT_EQ(runKit({u"upgrade"_s, files.folder() + u"/no.wf"_s}).status, 2);
}

} // namespace
} // namespace plum::kit
