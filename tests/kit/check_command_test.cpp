#include "kit/check_command.h"
#include "kit_process.h"
#include "support/temporary_files.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace plum::kit {
namespace {

using namespace Qt::StringLiterals;
using test::KitRun;
using test::runKit;

CheckOptions read(const QStringList &arguments, const QString &expectedProblem = {})
{
    QString problem;
    const CheckOptions options = readCheckOptions(arguments, problem);
    EXPECT_EQ(problem, expectedProblem);
    return options;
}

TEST(CheckOptions, areFilesAndAFormat)
{
    EXPECT_EQ(read({u"a.wf"_s, u"-"_s}).paths, QStringList({u"a.wf"_s, u"-"_s}));
    EXPECT_EQ(read({u"a.wf"_s}).format, FindingFormat::Text);
    EXPECT_EQ(read({u"--format"_s, u"json"_s, u"a.wf"_s}).format, FindingFormat::Json);
    EXPECT_EQ(read({u"a.wf"_s, u"--format"_s, u"sarif"_s}).format, FindingFormat::Sarif);
    EXPECT_TRUE(read({u"--help"_s}).wantsHelp);
}

TEST(CheckOptions, sayWhatIsWrongWithThem)
{
    read({}, u"which file?"_s);
    read({u"--format"_s, u"xml"_s, u"a.wf"_s}, u"--format takes text, json or sarif, not \"xml\""_s);
    read({u"a.wf"_s, u"--format"_s}, u"--format takes text, json or sarif, not \"\""_s);
    read({u"--all"_s}, u"there is no option --all"_s);
}

class KitChecks : public testing::Test
{
protected:
    KitRun check(const QStringList &arguments) { return runKit(QStringList{u"check"_s} + arguments); }

    test::TemporaryFiles files;
};

TEST_F(KitChecks, endWith0WithoutFindingsAndWithHintsAlone)
{
    const KitRun nothing = check({files.write(u"a.wf"_s, "mouse.click\r\n")});
    EXPECT_EQ(nothing.status, 0) << nothing.errors.toStdString();
    EXPECT_EQ(nothing.output, QString());
    const QString path = files.write(u"b.wf"_s, "set.a \"1\"\r\n");
    const KitRun hint = check({path});
    EXPECT_EQ(hint.status, 0);
    EXPECT_EQ(hint.output, path + u":1:5: hint: No line reads \"a\". [never-read]\n"_s);
}

TEST_F(KitChecks, endWith1AndALineForEachFinding)
{
    const QString path = files.write(u"a.wf"_s, "mouse.click\r\nmouse.klick\r\n");
    const KitRun found = check({path});
    EXPECT_EQ(found.status, 1);
    EXPECT_EQ(found.output,
        path
            + u":1:1: hint: In edition 2 of the language (//edition:2) mistakes are told before a script "
              u"runs. "
              "[old-edition]\n"_s
            + path
            + u":2:7: error: mouse has no command \"klick\"; the line does nothing. Did you mean "
              u"\"mouse.click\"? "
              "[unknown-command]\n"_s);
}

TEST_F(KitChecks, endWith2ForWhatCannotBeRead)
{
    const QString missing = files.folder() + u"/missing.wf"_s;
    const KitRun unreadable = check({missing});
    EXPECT_EQ(unreadable.status, 2);
    EXPECT_EQ(unreadable.errors, u"plumkit: %1 cannot be read\n"_s.arg(missing));
    EXPECT_EQ(check({files.folder()}).status, 2);
    EXPECT_EQ(check({u"--nonsense"_s}).status, 2);
}

TEST_F(KitChecks, takeAFolderForItsScripts)
{
    const QString a = files.write(u"a/main.wf"_s, "//edition:2\nmouse.clik\n");
    files.write(u"a/.main.wf"_s, "mouse.klick\r\n");
    files.write(u"b/notes.txt"_s, "mouse.klick\r\n");
    const QString b = files.write(u"b/main.wf"_s, "\r\nmouse.clack\r\n");
    const KitRun found = check({files.folder(), u"--format"_s, u"json"_s});
    EXPECT_EQ(found.status, 1);
    const QJsonArray array = QJsonDocument::fromJson(found.output.toUtf8()).array();
    QStringList places;
    for (const QJsonValue &finding : array)
        places += u"%1:%2 %3"_s.arg(finding[u"file"_s].toString())
                      .arg(finding[u"line"_s].toInt())
                      .arg(finding[u"rule"_s].toString());
    EXPECT_EQ(
        places, QStringList({a + u":2 syntax"_s, b + u":1 old-edition"_s, b + u":2 unknown-command"_s}));
}

TEST_F(KitChecks, readStandardInput)
{
    const KitRun found = runKit({u"check"_s, u"-"_s}, [](QProcess &process) {
        process.write("keyboard.key \"z\"\r\n");
        process.closeWriteChannel();
    });
    EXPECT_EQ(found.status, 1) << found.errors.toStdString();
    EXPECT_TRUE(found.output.contains(u"-:1:14: warning: "_s)) << found.output.toStdString();
}

} // namespace
} // namespace plum::kit
