#include "kit/sheet_command.h"
#include "kit_process.h"
#include "support/temporary_files.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace plum::kit {
namespace {

using namespace Qt::StringLiterals;
using test::KitRun;
using test::runKit;

QString problemOf(const QStringList &arguments)
{
    QString problem;
    readSheetOptions(arguments, problem);
    return problem;
}

TEST(SheetOptions, sayWhatIsWrongWithThem)
{
    EXPECT_EQ(problemOf({}), u"which file?"_s);
    EXPECT_EQ(problemOf({u"a.wf"_s, u"b.wf"_s}), u"one file at a time, not also b.wf"_s);
    EXPECT_EQ(
        problemOf({u"--format"_s, u"sarif"_s, u"a.wf"_s}), u"--format takes text or json, not \"sarif\""_s);
    EXPECT_EQ(problemOf({u"-x"_s}), u"there is no option -x"_s);
    EXPECT_EQ(problemOf({u"a.wf"_s, u"--format"_s, u"json"_s}), QString());
}

TEST(KitSheet, printsSentencesAndJson)
{
    test::TemporaryFiles files;
    const QString path = files.write(u"main.wf"_s, "os.lock_screen\r\n");
    const KitRun text = runKit({u"sheet"_s, path});
    EXPECT_EQ(text.status, 0) << text.errors.toStdString();
    EXPECT_EQ(text.output, u"Locks the screen.\nContacts nobody.\n"_s);
    const KitRun json = runKit({u"sheet"_s, u"--format"_s, u"json"_s, path.section(u'/', 0, -2)});
    EXPECT_EQ(QJsonDocument::fromJson(json.output.toUtf8()).object().keys(), QStringList(u"session"_s));
}

TEST(KitSheet, endsWith2WhereNothingCanBeRead)
{
    const KitRun run = runKit({u"sheet"_s, u"/nowhere/main.wf"_s});
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(run.errors.contains(u"cannot be read"_s));
}

} // namespace
} // namespace plum::kit
