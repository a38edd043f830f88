#include "engine/edition2/parser.h"
#include "engine/editions/later_edition.h"
#include "engine/script_vocabulary.h"
#include "library/app_library.h"
#include "library/library_bench.h"
#include "recording/recording_commands.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QString appsFolder()
{
    return QStringLiteral(PLUM_APPS);
}

QStringList starterApps()
{
    return QDir(appsFolder()).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
}

// The starter apps in a library of their own, on the recording backend.
class StarterAppsTest : public testing::Test, protected recording::ScriptBench
{
protected:
    StarterAppsTest()
    {
        platform.paths().folder = m_folder.path();
        waiter.records = false;
        for (const QString &app : starterApps()) {
            QDir().mkpath(m_folder.apps(app));
            for (const QString &name : QDir(appsFolder() + u'/' + app).entryList(QDir::Files))
                QFile::copy(appsFolder() + u'/' + app + u'/' + name, m_folder.apps(app) + u'/' + name);
        }
    }

    // What an app does when `typed` stands in the keyword box.
    QStringList events(const QString &typed)
    {
        platform.log.clear();
        const QString keyword = typed.section(u' ', 0, 0);
        launcher.keywordBox = typed;
        const QString before = QDir::currentPath();
        QDir::setCurrent(m_folder.path()); // where the launcher runs
        system.starts().runApp(keyword, RunStart::ScriptPath::Kept);
        QDir::setCurrent(before);
        return platform.log.lines();
    }

    recording::ProgramFolder m_folder;
};

} // namespace

TEST_F(StarterAppsTest, thereAreEightAtLeast)
{
    EXPECT_GE(starterApps().size(), 8);
}

TEST_F(StarterAppsTest, everyOneHasAGuideWindowsLineEndsAndKnownCommands)
{
    const ScriptVocabulary vocabulary = system.vocabulary();
    for (const QString &app : starterApps()) {
        const QByteArray script = recording::bytesOf(m_folder.script(app));
        EXPECT_EQ(script.count('\n'), script.count("\r\n")) << qPrintable(app);
        EXPECT_TRUE(script.endsWith("\r\n")) << qPrintable(app);
        QStringList lines = splitLines(QString::fromUtf8(script));
        EXPECT_EQ(guideOf(lines.takeFirst()).kind, AppGuide::Kind::Text) << qPrintable(app);
        if (askedEdition(script).number == 2) {
            const edition2::Parsed parsed = edition2::parse(QString::fromUtf8(script), vocabulary);
            EXPECT_TRUE(parsed.mistakes.isEmpty()) << qPrintable(app);
            continue;
        }
        for (const QString &line : std::as_const(lines))
            EXPECT_TRUE(vocabulary.knows(line.section(u' ', 0, 0))) << qPrintable(app + u": "_s + line);
    }
}

TEST_F(StarterAppsTest, helloGreetsByName)
{
    EXPECT_EQ(events(u"hello"_s), QStringList(u"input What is your name?|name"_s));
    state.vardict.SetVar(u"name"_s, u"Ann"_s);
    qint16 end = 2;
    loop.RunLines(state.runidx[0], end);
    EXPECT_EQ(
        platform.log.lines().last(), u"tip Hello Ann! Type a keyword and press Enter, and its app runs."_s);
}

TEST_F(StarterAppsTest, typePastesWhatWasTyped)
{
    const QStringList log = events(u"type Hello, world"_s);
    EXPECT_EQ(log.first(), u"hide launcher"_s);
    EXPECT_TRUE(log.contains(u"clipboard set Hello, world"_s));
}

TEST_F(StarterAppsTest, clipShowsTheClipboard)
{
    platform.clipboard().content = u"on it"_s;
    EXPECT_EQ(events(u"clip"_s), QStringList(u"tip on it"_s));
}

TEST_F(StarterAppsTest, slashesTurnsBackslashes)
{
    platform.clipboard().content = u"C:\\a,b\\c"_s;
    EXPECT_EQ(events(u"slashes"_s).last(), u"tip C:/a,b/c"_s);
    EXPECT_EQ(platform.clipboard().content, u"C:/a,b/c"_s);
}

TEST_F(StarterAppsTest, pointerTellsThePosition)
{
    platform.pointer().at = {12, 34};
    EXPECT_EQ(events(u"pointer"_s), QStringList({u"hide launcher"_s, u"tip The pointer is at 12:34"_s}));
}

TEST_F(StarterAppsTest, cornerMovesTheWindowInFront)
{
    platform.windows().foregroundWindow = 7;
    EXPECT_EQ(events(u"corner"_s), QStringList({u"hide launcher"_s, u"window move 7 0 0"_s}));
}

TEST_F(StarterAppsTest, notesShowsWhatNoteWroteDown)
{
    events(u"note buy plums, ripe ones"_s);
    events(u"note call Ann"_s);
    EXPECT_EQ(recording::bytesOf(m_folder.apps(u"note/notes.txt"_s)), "buy plums, ripe ones\r\ncall Ann\r\n");
    EXPECT_EQ(events(u"notes"_s), QStringList(u"tip call Ann\r\nbuy plums, ripe ones\r\n"_s));
}

TEST_F(StarterAppsTest, noteSaysWhatItDid)
{
    EXPECT_EQ(events(u"note buy plums"_s).last(), u"tip Noted: buy plums"_s);
    EXPECT_EQ(events(u"note"_s).last(), u"tip Type what is to be noted behind the keyword."_s);
    EXPECT_EQ(recording::bytesOf(m_folder.apps(u"note/notes.txt"_s)), "buy plums\r\n");
}

TEST_F(StarterAppsTest, calcEvaluatesAndKeepsTheResult)
{
    EXPECT_EQ(events(u"calc 6*(7+1)"_s).last(), u"tip 6*(7+1) = 48"_s);
    EXPECT_EQ(platform.clipboard().content, u"48"_s);
}

TEST_F(StarterAppsTest, calcSaysWhyThereIsNoResult)
{
    EXPECT_EQ(events(u"calc 2+"_s),
        QStringList(u"tip 2+ cannot be worked out: a number is missing, at character 3 of the expression"_s));
    EXPECT_EQ(platform.clipboard().content, QString());
}

TEST_F(StarterAppsTest, openSaysWhatCannotBeOpened)
{
    static_cast<recording::RecordingShell &>(platform.shell()).succeeds = false;
    EXPECT_EQ(events(u"open /nonexistent"_s).last(), u"tip /nonexistent cannot be opened"_s);
}

TEST_F(StarterAppsTest, pageCopiesAPageOrSaysWhyNot)
{
    http.answer.status = 200;
    http.answer.body = "its text";
    EXPECT_EQ(events(u"page http://x/"_s).last(), u"tip The page is on the clipboard."_s);
    EXPECT_EQ(platform.clipboard().content, u"its text"_s);
    http.answer.status = 0;
    EXPECT_TRUE(events(u"page http://x/"_s).last().startsWith(u"tip There is no page: "_s));
    EXPECT_EQ(platform.clipboard().content, u"its text"_s);
}

TEST_F(StarterAppsTest, timerSaysWhatIsNoTime)
{
    EXPECT_EQ(events(u"timer abc"_s), QStringList(u"tip \"abc\" is no number of seconds."_s));
}

TEST_F(StarterAppsTest, openOpensWhatWasTyped)
{
    EXPECT_EQ(events(u"open /home/me/a b.txt"_s), QStringList(u"open \\home\\me\\a b.txt||1"_s));
}

TEST_F(StarterAppsTest, webHandsTheAddressToTheBrowserHelper)
{
    const QStringList log = events(u"web http://localhost/"_s);
    ASSERT_EQ(log.size(), 1);
    EXPECT_TRUE(log.first().contains(u"_tarnwick_url_|||http://localhost/|||"_s)) << qPrintable(log.first());
}

TEST_F(StarterAppsTest, timerWaitsForTheSeconds)
{
    waiter.records = true;
    const QStringList log = events(u"timer 5"_s);
    EXPECT_TRUE(log.contains(u"wait 5000"_s)) << qPrintable(log.join(u'|'));
    EXPECT_EQ(log.last(), u"tip 5 seconds are over."_s);
}

TEST_F(StarterAppsTest, timerWaitsForMinutesWithoutAWaitThatLastsLonger)
{
    waiter.records = true;
    QStringList waits;
    for (const QString &event : events(u"timer 500"_s).filter(u"wait "_s))
        waits += event != "wait 10"_L1 ? QStringList(event) : QStringList();
    EXPECT_EQ(waits, (QStringList{u"wait 200000"_s, u"wait 200000"_s, u"wait 100000"_s}));
}

} // namespace plum
