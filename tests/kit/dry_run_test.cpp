#include "kit/dry_run.h"
#include "kit_process.h"
#include "platform/recording/recording_platform.h"
#include "recording/recording_commands.h"
#include "support/manual_examples.h"
#include "support/surroundings.h"
#include "support/temporary_files.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum::kit;
using plum::recording::ManualExample;
using plum::recording::manualExamples;
using plum::recording::ManualPage;
using plum::test::KitRun;
using plum::test::runKit;
using plum::test::TemporaryFiles;

namespace {

// The events of a dry run without their lines and without the pauses before lines.
QStringList eventsOf(const QString &printed)
{
    QStringList events;
    for (const QString &line :
        printed.split(QRegularExpression(u"\n(?=[0-9]+: |   )"_s), Qt::SkipEmptyParts)) {
        if (!line.startsWith(u' '))
            events += line.section(u": "_s, 1);
    }
    events.removeAll(u"wait 10"_s);
    return events;
}

// Every file with its size.
QStringList filesBelow(const QString &folder)
{
    QStringList names;
    for (QDirIterator all(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories); all.hasNext();) {
        all.next();
        names += u"%1 %2"_s.arg(all.filePath()).arg(all.fileInfo().size());
    }
    names.sort();
    return names;
}

// A dry run in this process, whose desktop can be furnished.
class Dry
{
public:
    // The program folder is `folder`/program.
    explicit Dry(const QString &folder)
    {
        m_paths.folder = folder + u"/program"_s;
        m_run.desktop().screen().size = {200, 150};
    }

    // False when it has no such thing.
    bool arrange(const QStringList &given)
    {
        for (const QString &each : given) {
            const QString what = each.section(u' ', 0, 0);
            const QString rest = each.section(u' ', 1);
            const QStringList words = rest.split(u' ');
            const auto number = [&words](int index) { return words.value(index).toInt(); };
            plum::recording::RecordingWindows &windows = m_run.desktop().windows();
            if (what == "clipboard"_L1) {
                m_run.desktop().clipboard().content = rest;
            } else if (what == "typed"_L1) {
                options.typed = rest.section(u' ', 1);
            } else if (what == "answer"_L1) {
                options.answers += rest;
            } else if (what == "pointer"_L1) {
                m_run.desktop().pointer().at = {number(0), number(1)};
            } else if (what == "javascript"_L1) {
                m_run.desktop().javaScript().answer.value = rest;
            } else if (what == "titled"_L1) {
                windows.titles[words[1]] = number(0);
            } else if (what == "window"_L1) {
                windows.foregroundWindow = windows.windowUnderPointer = number(0);
                windows.rectangles[number(0)] = QRect(number(1), number(2), number(3), number(4));
            } else {
                return false;
            }
        }
        return true;
    }

    Status run(const QString &file)
    {
        options.file = file;
        return m_run.run(options);
    }

    DryOptions options;
    QStringList printed;
    QStringList errors;

    // With the program folder that examples have.
    QStringList withFolderOfBench(QStringList events) const
    {
        return events.replaceInStrings(m_paths.folder, u"C:\\plum"_s);
    }

private:
    QTemporaryDir m_scratch;
    plum::recording::RecordingPaths m_paths;
    DryRun m_run{{m_paths, m_scratch.path()}, [this](const QString &line) { printed += line; },
        [this](const QString &line) { errors += line; }};
};

class DryRuns : public testing::Test
{
protected:
    KitRun run(const QByteArray &script, const QStringList &options = {})
    {
        path = files.write(u"some.wf"_s, script);
        return runKit(QStringList{u"dry"_s} + options + QStringList{path});
    }

    TemporaryFiles files;
    QString path;
};

} // namespace

TEST_F(DryRuns, SayWhatWouldHappenWithTheLines)
{
    const KitRun ended = run("mouse.move \"3:4\"\r\n//\r\nkeyboard.hotkey \"ctrl\",\"c\"\r\n");
    EXPECT_EQ(ended.status, 0) << ended.errors.toStdString();
    EXPECT_EQ(ended.output,
        u"1: wait 10\n1: move 3 4\n3: wait 10\n3: key 17 0\n3: key 67 0\n3: key 17 2\n3: key 67 2\n"_s);
    EXPECT_EQ(ended.errors, QString());
}

TEST_F(DryRuns, TakeNoTimeAndReachNobody)
{
    QElapsedTimer time;
    time.start();
    const KitRun ended = run("//edition:2\ntime.sleep 3600000\nnet.get \"http://127.0.0.1:1/\",page\n"
                             "os.run \"touch\",\""
        + files.folder().toUtf8() + "/made\",out\n");
    EXPECT_EQ(ended.status, 0) << ended.errors.toStdString();
    EXPECT_LT(time.elapsed(), 60'000);
    EXPECT_TRUE(ended.output.contains(u"wait 3600000"_s));
    EXPECT_TRUE(ended.output.contains(u"get http://127.0.0.1:1/"_s));
    EXPECT_TRUE(ended.output.contains(u"run touch|"_s));
    EXPECT_FALSE(QFile::exists(files.folder() + u"/made"_s));
}

TEST_F(DryRuns, ChangeCopiesOfFilesAlone)
{
    files.write(u"notes.txt"_s, "before");
    const QByteArray folder = files.folder().toUtf8();
    const KitRun ended = run("//edition:2\nfile.read \"" + folder + "/notes.txt\",all,a\nfile.write \""
        + folder + "/notes.txt\",$\"{a} and after\"\nfile.read \"" + folder
        + "/notes.txt\",all,b\nos.tips set.b\nfile.write \"" + folder + "/new.txt\",set.b\nfile.move \""
        + folder + "/notes.txt\",\"" + folder + "/moved.txt\"\nfile.list \"" + folder
        + "\",\"*.txt\",names\nos.tips set.names\n");
    EXPECT_EQ(ended.status, 0) << ended.errors.toStdString();
    EXPECT_TRUE(ended.output.contains(u"tip before and after"_s)) << ended.output.toStdString();
    EXPECT_TRUE(ended.output.contains(u"tip moved.txt"_s)) << ended.output.toStdString();
    EXPECT_EQ(files.read(u"notes.txt"_s), "before");
    EXPECT_FALSE(QFile::exists(files.folder() + u"/new.txt"_s));
    EXPECT_FALSE(QFile::exists(files.folder() + u"/moved.txt"_s));
}

TEST_F(DryRuns, TakeAnswersFromTheCommandLine)
{
    for (const QByteArray &script :
        std::initializer_list<QByteArray>{"//edition:2\ninput.text who,\"Who?\"\nos.tips set.who\n",
            "input.text \"who\",\"Who?\"\r\nos.tips set.who\r\n"}) {
        const KitRun ended = run(script, {u"--answer"_s, u"Ann"_s});
        EXPECT_EQ(ended.status, 0) << ended.errors.toStdString();
        EXPECT_TRUE(ended.output.contains(u"tip Ann"_s)) << ended.output.toStdString();
        EXPECT_EQ(run(script).status, 130);
    }
}

TEST_F(DryRuns, GiveUpAfterTooManyEvents)
{
    const KitRun ended = run("mouse.while_click \"\",\"click\",\"5\"\r\n", {u"--events"_s, u"50"_s});
    EXPECT_EQ(ended.status, 124);
    EXPECT_EQ(ended.output.count(u'\n'), 50);
}

TEST_F(DryRuns, SayWhereAScriptIsWrong)
{
    const KitRun later = run("//edition:2\nset.a set.b\n");
    EXPECT_EQ(later.errors, path + u":2:7: b was never set\n"_s);
    EXPECT_EQ(later.status, 1);
    EXPECT_EQ(run("set.a \"1\"\r\nwhile.start \"count\",\"many\"\r\nwhile.end\r\n").status, 1);
    EXPECT_EQ(runKit({u"dry"_s, u"/there/is/no.wf"_s}).status, 2);
    EXPECT_EQ(runKit({u"dry"_s}).status, 2);
    EXPECT_EQ(runKit({u"dry"_s, u"--events"_s, u"0"_s, path}).status, 2);
}

// The examples whose surroundings a dry run can have.
TEST_F(DryRuns, DoWhatTheManualSaysOfItsExamples)
{
    int compared = 0;
    for (const ManualPage page : {ManualPage::Edition1, ManualPage::Edition2}) {
        for (const ManualExample &example : manualExamples(page)) {
            Dry dry(files.folder());
            if (!example.does || example.isError || !example.error.isEmpty() || !dry.arrange(example.given))
                continue;
            SCOPED_TRACE("line " + std::to_string(example.line));
            QStringList lines = example.script;
            if (page == ManualPage::Edition2 && !lines.first().startsWith("//edition:"_L1))
                lines.prepend(u"//edition:2"_s);
            dry.run(files.write(u"some.wf"_s, lines.join(u"\r\n"_s).toUtf8()));
            EXPECT_EQ(dry.withFolderOfBench(eventsOf(dry.printed.join(u'\n'))), *example.does)
                << dry.errors.join(u'\n').toStdString();
            ++compared;
        }
    }
    EXPECT_GT(compared, 20);
}

TEST_F(DryRuns, OfEveryStarterAppComeToTheirEndsAndChangeNothing)
{
    const QDir apps(QStringLiteral(PLUM_APPS));
    const QStringList names = apps.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    ASSERT_GE(names.size(), 8);
    for (const QString &name : names) {
        for (const QString &file : QDir(apps.filePath(name)).entryList(QDir::Files)) {
            QFile source(apps.filePath(name) + u'/' + file);
            ASSERT_TRUE(source.open(QIODevice::ReadOnly));
            files.write(u"program/config/apps/%1/%2"_s.arg(name, file), source.readAll());
        }
    }
    const QStringList before = filesBelow(files.folder() + u"/program"_s);
    for (const QString &name : names) {
        Dry dry(files.folder());
        dry.options.typed = u"some text"_s;
        dry.options.answers = QStringList(20, u"5"_s);
        EXPECT_EQ(dry.run(files.folder() + u"/program/config/apps/%1/main.wf"_s.arg(name)), Done)
            << name.toStdString() << ": " << dry.errors.join(u'\n').toStdString();
        EXPECT_FALSE(dry.printed.isEmpty()) << name.toStdString();
    }
    EXPECT_EQ(filesBelow(files.folder() + u"/program"_s), before);
}

// What the launcher does with the same apps, on the bench of their own tests.
TEST_F(DryRuns, OfEveryStarterAppGiveTheEventsOfTheLauncher)
{
    struct Row
    {
        const char *app;
        QString typed = {};
        QStringList given = {};
        QStringList answers = {};
        QStringList afterAnswer = {}; // the bench rests at a question
    };
    const std::vector<Row> rows{{"calc", u"6*(7+1)"_s}, {"clip", {}, {u"clipboard on it"_s}},
        {"corner", {}, {u"window 7 50 60 100 100"_s}},
        {"hello", {}, {}, {u"Ann"_s},
            {u"tip Hello Ann! Type a keyword and press Enter, and its app runs."_s}},
        {"note", u"buy plums"_s}, {"notes"}, {"open", u"/home/me/a b.txt"_s},
        {"page", u"http://127.0.0.1:1/"_s}, {"pointer", {}, {u"pointer 12 34"_s}},
        {"slashes", {}, {u"clipboard C:\\a,b\\c"_s}}, {"timer", u"500"_s}, {"type", u"Hello, world"_s},
        {"web", u"http://127.0.0.1:1/"_s}};
    QStringList compared;
    for (const Row &row : rows)
        compared += QString::fromLatin1(row.app);
    EXPECT_EQ(compared, QDir(QStringLiteral(PLUM_APPS)).entryList(QDir::Dirs | QDir::NoDotAndDotDot));
    for (const Row &row : rows) {
        SCOPED_TRACE(row.app);
        const QString app = QString::fromLatin1(row.app);
        QFile source(QStringLiteral(PLUM_APPS "/%1/main.wf").arg(app));
        ASSERT_TRUE(source.open(QIODevice::ReadOnly));
        const QString script = files.write(u"program/config/apps/%1/main.wf"_s.arg(app), source.readAll());
        files.write(u"program/config/apps/note/notes.txt"_s, "buy plums\r\ncall Ann\r\n");
        Dry dry(files.folder());
        ASSERT_TRUE(dry.arrange(row.given));
        dry.options.typed = row.typed;
        dry.options.answers = row.answers;
        EXPECT_EQ(dry.run(script), Done) << dry.errors.join(u'\n').toStdString();
        plum::recording::ScriptBench bench;
        bench.platform.paths().folder = files.folder() + u"/program"_s;
        plum::recording::Surroundings around(bench, files.folder());
        for (const QString &given : row.given)
            around.arrange(given);
        bench.platform.log.clear();
        bench.http.answer.status = 200;
        bench.launcher.keywordBox = app + u' ' + row.typed;
        const QString before = QDir::currentPath();
        QDir::setCurrent(files.folder() + u"/program"_s); // where the launcher runs
        bench.system.starts().runApp(app, plum::RunStart::ScriptPath::Kept);
        QDir::setCurrent(before);
        QStringList events = bench.events();
        events.removeAll(u"wait 10"_s);
        EXPECT_FALSE(events.isEmpty());
        EXPECT_EQ(eventsOf(dry.printed.join(u'\n')), events + row.afterAnswer);
    }
}
