#include "kit/dap/debug_server.h"

#include "engine/editions/script_error.h"
#include "engine/run_time_error.h"
#include "platform/stop_signal.h"
#include "support/script_bench.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

#include <deque>

using namespace Qt::StringLiterals;
using namespace plum;
using namespace plum::kit;

namespace {

// An editor and a run on the recording backend. What the editor says while the run is held is a list of
// requests for each time; it goes on when they have been said.
class DebugServerTest : public testing::Test
{
protected:
    using Requests = std::vector<std::pair<QString, QJsonObject>>;

    QJsonObject ask(const QString &command, const QJsonObject &arguments = {})
    {
        server.take({{u"seq"_s, ++m_seq}, {u"type"_s, u"request"_s}, {u"command"_s, command},
            {u"arguments"_s, arguments}});
        return answers.last();
    }

    // The reason why a request is not met; empty when it is.
    QString problemOf(const QString &command, const QJsonObject &arguments = {})
    {
        const QJsonObject answer = ask(command, arguments);
        EXPECT_EQ(answer[u"request_seq"_s].toInt(), m_seq);
        return answer[u"success"_s].toBool() ? QString() : answer[u"message"_s].toString();
    }

    QJsonObject bodyOf(const QString &command, const QJsonObject &arguments = {})
    {
        const QJsonObject answer = ask(command, arguments);
        EXPECT_TRUE(answer[u"success"_s].toBool()) << qPrintable(answer[u"message"_s].toString());
        return answer[u"body"_s].toObject();
    }

    QString write(const QByteArray &script) { return files.write(u"main.wf"_s, script); }

    void launch(const QByteArray &script, QJsonObject how = {})
    {
        how[u"program"_s] = write(script);
        bodyOf(u"initialize"_s);
        bodyOf(u"launch"_s, how);
    }

    // Lines where the run may be held; those where it will be.
    QList<int> setBreakpoints(const QList<int> &lines, const QString &name = u"main.wf"_s)
    {
        QJsonArray wanted;
        for (const int line : lines)
            wanted += QJsonObject{{u"line"_s, line}};
        const QString path = files.folder() + u'/' + name;
        const QJsonObject body = bodyOf(
            u"setBreakpoints"_s, {{u"source"_s, QJsonObject{{u"path"_s, path}}}, {u"breakpoints"_s, wanted}});
        QList<int> placed;
        for (const QJsonValue &each : body[u"breakpoints"_s].toArray())
            placed += each[u"verified"_s].toBool() ? each[u"line"_s].toInt() : 0;
        return placed;
    }

    // Runs what was launched.
    void go()
    {
        bodyOf(u"configurationDone"_s);
        ASSERT_TRUE(m_started);
        bench.state.observer = &server.observer();
        ASSERT_TRUE(bench.system.starts().prepareFile(m_started->program));
        try {
            bench.system.starts().runAll();
            server.runEnded(0);
        } catch (const ScriptError &) {
            server.runEnded(1);
        } catch (const RunTimeError &) {
            server.runEnded(1);
        } catch (const RunStopped &) {
            server.runEnded(130);
        }
    }

    // "reason line" where the run is held now.
    QString place()
    {
        const QJsonObject frame
            = bodyOf(u"stackTrace"_s, {{u"threadId"_s, 1}})[u"stackFrames"_s][0].toObject();
        return u"%1 %2"_s.arg(events.last()[u"body"_s][u"reason"_s].toString()).arg(frame[u"line"_s].toInt());
    }

    // "name=value" of a scope of the innermost frame.
    QStringList values(int scope)
    {
        const QJsonArray scopes = bodyOf(u"scopes"_s, {{u"frameId"_s, 1}})[u"scopes"_s].toArray();
        QStringList found;
        const QJsonObject body
            = bodyOf(u"variables"_s, {{u"variablesReference"_s, scopes[scope][u"variablesReference"_s]}});
        for (const QJsonValue &value : body[u"variables"_s].toArray())
            found += value[u"name"_s].toString() + u'=' + value[u"value"_s].toString();
        return found;
    }

    QStringList namesOfEvents() const
    {
        QStringList names;
        for (const QJsonObject &event : events)
            names += event[u"event"_s].toString();
        return names;
    }

    test::TemporaryFiles files;
    recording::ScriptBench bench;
    QList<QJsonObject> answers;
    QList<QJsonObject> events;
    std::deque<std::function<void()>> holds; // what is done each time that the run is held
    bool stops = false;
    bool hasLetGo = false;

    DebugServer server{{.vocabulary = bench.system.vocabulary(),
        .send
        = [this](
              const QJsonObject &message) { (message.contains(u"event"_s) ? events : answers) += message; },
        .start = [this](const LaunchRequest &request) { m_started = request; },
        .hold =
            [this](const std::function<bool()> &isOver) {
                ASSERT_FALSE(holds.empty()) << "held once more than expected";
                const auto talk = holds.front();
                holds.pop_front();
                talk();
                if (stops)
                    throw RunStopped();
                EXPECT_TRUE(isOver());
            },
        .stop = [this] { stops = true; },
        .letGo = [this] { hasLetGo = true; }}};

    std::optional<LaunchRequest> m_started;
    int m_seq = 0;
};

} // namespace

TEST_F(DebugServerTest, BeginsWhenTheEditorHasSaidAll)
{
    const QJsonObject able = bodyOf(u"initialize"_s);
    EXPECT_TRUE(able[u"supportsConfigurationDoneRequest"_s].toBool());
    EXPECT_EQ(able[u"exceptionBreakpointFilters"_s].toArray().size(), 2);
    EXPECT_TRUE(events.isEmpty());
    bodyOf(u"launch"_s,
        {{u"program"_s, write("//edition:2\n")}, {u"dry"_s, true}, {u"timeout"_s, 2.5},
            {u"set"_s, QJsonObject{{u"who"_s, u"Ann"_s}}}, {u"answers"_s, QJsonArray{u"yes"_s, u"no"_s}},
            {u"typed"_s, u"hello"_s}});
    EXPECT_EQ(namesOfEvents(), QStringList(u"initialized"_s));
    EXPECT_FALSE(m_started);
    bodyOf(u"configurationDone"_s);
    ASSERT_TRUE(m_started);
    EXPECT_TRUE(m_started->isDry);
    EXPECT_EQ(m_started->timeout, 2.5);
    EXPECT_EQ(m_started->variables, (QList<std::pair<QString, QString>>{{u"who"_s, u"Ann"_s}}));
    EXPECT_EQ(m_started->answers, (QStringList{u"yes"_s, u"no"_s}));
    EXPECT_EQ(m_started->typed, u"hello"_s);
}

TEST_F(DebugServerTest, MovesBreakpointsToTheNextLineThatRuns)
{
    launch("//edition:2\n\nset.a 1\nwhen.start set.a,is,1\n    set.b 1\nwhen.end\n// end\n");
    EXPECT_EQ(setBreakpoints({1, 3, 4, 6}), (QList<int>{3, 3, 4, 0}));
    holds = {[this] {
                 EXPECT_EQ(place(), u"breakpoint 3"_s);
                 EXPECT_EQ(events.last()[u"body"_s][u"hitBreakpointIds"_s].toArray(), (QJsonArray{1, 2}));
                 bodyOf(u"continue"_s);
             },
        [this] {
            EXPECT_EQ(place(), u"breakpoint 4"_s);
            bodyOf(u"continue"_s);
        }};
    go();
    EXPECT_EQ(namesOfEvents(),
        (QStringList{u"initialized"_s, u"stopped"_s, u"stopped"_s, u"exited"_s, u"terminated"_s}));
}

TEST_F(DebugServerTest, SaysWhereABreakpointCanBe)
{
    launch("set.a \"1\"\r\n\r\nset.b \"1\"\r\n");
    const QJsonObject source{{u"path"_s, files.folder() + u"/main.wf"_s}};
    const QJsonArray found = bodyOf(u"breakpointLocations"_s,
        {{u"source"_s, source}, {u"line"_s, 1}, {u"endLine"_s, 3}})[u"breakpoints"_s]
                                 .toArray();
    EXPECT_EQ(found, (QJsonArray{QJsonObject{{u"line"_s, 1}}, QJsonObject{{u"line"_s, 3}}}));
    EXPECT_EQ(setBreakpoints({1}, u"missing.wf"_s), QList<int>{0});
}

TEST_F(DebugServerTest, ShowsVariablesAndWhatALineIsAboutToDo)
{
    launch("set.name \"Ann\"\r\nset.at \"1:2\"\r\nmouse.move set.at\r\n");
    setBreakpoints({3});
    holds = {[this] {
        EXPECT_EQ(values(0), (QStringList{u"at=1:2"_s, u"name=Ann"_s}));
        EXPECT_EQ(values(1), QStringList(u"to=1:2"_s));
        EXPECT_EQ(bodyOf(u"evaluate"_s, {{u"expression"_s, u"name"_s}})[u"result"_s], u"Ann"_s);
        EXPECT_EQ(bodyOf(u"evaluate"_s, {{u"expression"_s, u"set.name"_s}, {u"frameId"_s, 1}})[u"result"_s],
            u"Ann"_s);
        const QJsonObject change{
            {u"variablesReference"_s, 1}, {u"name"_s, u"at"_s}, {u"value"_s, u"30:40"_s}};
        EXPECT_EQ(bodyOf(u"setVariable"_s, change)[u"value"_s], u"30:40"_s);
        EXPECT_EQ(values(1), QStringList(u"to=30:40"_s));
        bodyOf(u"next"_s);
    }};
    go();
    EXPECT_TRUE(bench.events().contains(u"move 30 40"_s)) << qPrintable(bench.events().join(u'|'));
}

TEST_F(DebugServerTest, StepsIntoPartsOfOtherFiles)
{
    files.write(u"parts.wf"_s, "part.start p,x\n    set.y set.x\npart.end\n");
    launch("//edition:2\npart.use \"parts.wf\"\npart.run p,7\n", {{u"stopOnEntry"_s, true}});
    EXPECT_EQ(setBreakpoints({1}, u"parts.wf"_s), QList<int>{2});
    holds = {[this] {
                 EXPECT_EQ(place(), u"entry 3"_s);
                 bodyOf(u"stepIn"_s);
             },
        [this] {
            EXPECT_EQ(place(), u"breakpoint 2"_s);
            const QJsonArray frames
                = bodyOf(u"stackTrace"_s, {{u"threadId"_s, 1}})[u"stackFrames"_s].toArray();
            ASSERT_EQ(frames.size(), 2);
            EXPECT_EQ(frames[0][u"name"_s], u"p"_s);
            EXPECT_EQ(frames[0][u"source"_s][u"path"_s], files.folder() + u"/parts.wf"_s);
            EXPECT_EQ(frames[1][u"name"_s], u"main.wf"_s);
            EXPECT_EQ(frames[1][u"line"_s], 3);
            EXPECT_EQ(values(0), QStringList(u"x=7"_s));
            const QJsonObject page
                = bodyOf(u"stackTrace"_s, {{u"threadId"_s, 1}, {u"startFrame"_s, 1}, {u"levels"_s, 1}});
            EXPECT_EQ(page[u"stackFrames"_s].toArray().size(), 1);
            EXPECT_EQ(page[u"totalFrames"_s], 2);
            bodyOf(u"stepOut"_s);
        }};
    go();
}

TEST_F(DebugServerTest, HoldsAtErrorsAndSaysWhich)
{
    launch("//edition:2\nset.a set.b\n");
    bodyOf(u"setExceptionBreakpoints"_s, {{u"filters"_s, QJsonArray{u"uncaught"_s}}});
    holds = {[this] {
        EXPECT_EQ(place(), u"exception 2"_s);
        EXPECT_EQ(events.last()[u"body"_s][u"text"_s], u"b was never set"_s);
        EXPECT_EQ(bodyOf(u"exceptionInfo"_s)[u"description"_s], u"b was never set"_s);
        EXPECT_EQ(values(1), QStringList(u"value=b was never set"_s));
        bodyOf(u"continue"_s);
    }};
    go();
    EXPECT_EQ(events[events.size() - 2][u"body"_s][u"exitCode"_s], 1);
}

TEST_F(DebugServerTest, StopsAHeldRun)
{
    launch("set.a \"1\"\r\nmouse.move \"1:1\"\r\n", {{u"stopOnEntry"_s, true}});
    holds = {[this] { bodyOf(u"terminate"_s); }};
    go();
    EXPECT_EQ(bench.events().filter(u"move"_s), QStringList());
    EXPECT_EQ(events[events.size() - 2][u"body"_s][u"exitCode"_s], 130);
    EXPECT_FALSE(server.hasEnded());
    bodyOf(u"terminate"_s);
    bodyOf(u"disconnect"_s);
    EXPECT_TRUE(hasLetGo);
    EXPECT_TRUE(server.hasEnded());
}

TEST_F(DebugServerTest, HoldsAtTheNextLineWhenAskedTo)
{
    launch("set.a \"1\"\r\nmouse.move \"1:1\"\r\nset.b \"1\"\r\n");
    bench.waiter.onWait = [this] {
        if (bench.state.currentLine == 1)
            bodyOf(u"pause"_s, {{u"threadId"_s, 1}});
    };
    holds = {[this] {
        EXPECT_EQ(place(), u"pause 3"_s);
        bodyOf(u"continue"_s);
    }};
    go();
    EXPECT_TRUE(holds.empty());
}

TEST_F(DebugServerTest, RunsWithoutHoldingWhereNoDebuggingIsWanted)
{
    launch("set.a \"1\"\r\n", {{u"noDebug"_s, true}, {u"stopOnEntry"_s, true}});
    setBreakpoints({1});
    go();
    EXPECT_EQ(namesOfEvents(), (QStringList{u"initialized"_s, u"exited"_s, u"terminated"_s}));
}

TEST_F(DebugServerTest, CountsAsTheEditorDoes)
{
    bodyOf(u"initialize"_s, {{u"linesStartAt1"_s, false}, {u"columnsStartAt1"_s, false}});
    bodyOf(u"launch"_s, {{u"program"_s, write("// nothing\r\nset.a \"1\"\r\n")}});
    EXPECT_EQ(setBreakpoints({0}), QList<int>{1});
    holds = {[this] {
        const QJsonObject frame = bodyOf(u"stackTrace"_s)[u"stackFrames"_s][0].toObject();
        EXPECT_EQ(frame[u"line"_s], 1);
        EXPECT_EQ(frame[u"column"_s], 0);
        bodyOf(u"continue"_s);
    }};
    go();
}

TEST_F(DebugServerTest, AnswersWhatCannotBeWithAReason)
{
    EXPECT_EQ(problemOf(u"launch"_s), u"the first request is initialize"_s);
    EXPECT_EQ(problemOf(u"initialize"_s, {{u"pathFormat"_s, u"uri"_s}}),
        u"files are named by their paths, not in another format"_s);
    EXPECT_EQ(problemOf(u"initialize"_s, {{u"linesStartAt1"_s, 1}}), u"linesStartAt1 is true or false"_s);
    bodyOf(u"initialize"_s);
    EXPECT_EQ(problemOf(u"initialize"_s), u"this has been said already"_s);
    EXPECT_EQ(problemOf(u"nonsense"_s), u"there is no request \"nonsense\""_s);
    EXPECT_EQ(problemOf(u"launch"_s), u"program is missing; it is a text"_s);
    EXPECT_EQ(problemOf(u"launch"_s, {{u"program"_s, 3}}), u"program is a text"_s);
    EXPECT_EQ(problemOf(u"launch"_s, {{u"program"_s, u"/nowhere.wf"_s}}), u"/nowhere.wf cannot be read"_s);
    const QString program = write("set.a \"1\"\r\n");
    const auto problemWith = [&](const QString &name, const QJsonValue &value) {
        return problemOf(u"launch"_s, {{u"program"_s, program}, {name, value}});
    };
    EXPECT_EQ(problemWith(u"timeout"_s, -1), u"timeout is a number of seconds above 0"_s);
    EXPECT_EQ(problemWith(u"set"_s, QJsonArray()), u"set is an object"_s);
    EXPECT_EQ(problemWith(u"set"_s, QJsonObject{{u"a b"_s, u"x"_s}}), u"\"a b\" is no name of a variable"_s);
    EXPECT_EQ(problemWith(u"set"_s, QJsonObject{{u"a"_s, 1}}), u"set.a is a text"_s);
    EXPECT_EQ(problemWith(u"answers"_s, QJsonArray{1}), u"answers is a list of texts"_s);
    EXPECT_EQ(problemOf(u"pause"_s), u"there is no run"_s);
    EXPECT_EQ(problemOf(u"terminate"_s), u"there is no run"_s);
    EXPECT_EQ(problemOf(u"stackTrace"_s), u"the run is not held"_s);
    EXPECT_EQ(problemOf(u"continue"_s), u"the run is not held"_s);
    EXPECT_EQ(problemOf(u"setBreakpoints"_s), u"source.path is missing; it is a text"_s);
    EXPECT_EQ(problemOf(u"setBreakpoints"_s,
                  {{u"source"_s, QJsonObject{{u"path"_s, program}}},
                      {u"breakpoints"_s, QJsonArray{QJsonObject{{u"line"_s, 1.5}}}}}),
        u"breakpoints.line is a whole number"_s);
    EXPECT_EQ(problemOf(u"setExceptionBreakpoints"_s, {{u"filters"_s, QJsonArray{u"all"_s}}}),
        u"there is no filter \"all\""_s);
    server.take(
        {{u"seq"_s, 99}, {u"type"_s, u"request"_s}, {u"command"_s, u"threads"_s}, {u"arguments"_s, 3}});
    EXPECT_EQ(answers.last()[u"message"_s], u"arguments is an object"_s);
    server.take({});
    EXPECT_EQ(answers.last()[u"message"_s], u"a message is of the type request"_s);
    const qsizetype before = answers.size();
    server.take({{u"type"_s, u"response"_s}});
    EXPECT_EQ(answers.size(), before);
}

TEST_F(DebugServerTest, AnswersWhatIsNotThereInAHeldRunWithAReason)
{
    launch("set.a \"1\"\r\nset.b \"1\"\r\n");
    setBreakpoints({2});
    holds = {[this] {
        EXPECT_EQ(problemOf(u"scopes"_s, {{u"frameId"_s, 2}}), u"there is no frame 2"_s);
        EXPECT_EQ(problemOf(u"scopes"_s), u"there is no frame 0"_s);
        EXPECT_EQ(problemOf(u"variables"_s, {{u"variablesReference"_s, 3}}), u"there are no variables 3"_s);
        EXPECT_EQ(problemOf(u"variables"_s), u"variablesReference is missing; it is a whole number"_s);
        const auto problemWith = [this](int scope, const QString &name) {
            return problemOf(u"setVariable"_s,
                {{u"variablesReference"_s, scope}, {u"name"_s, name}, {u"value"_s, u"x"_s}});
        };
        EXPECT_EQ(problemWith(1, u"b"_s), u"there is no variable b here"_s);
        EXPECT_EQ(problemWith(2, u"value"_s), u"only variables can be changed"_s);
        EXPECT_EQ(problemOf(u"exceptionInfo"_s), u"no line has failed"_s);
        EXPECT_EQ(problemOf(u"evaluate"_s, {{u"expression"_s, 1}}), u"expression is a text"_s);
        bodyOf(u"continue"_s);
        EXPECT_EQ(problemOf(u"next"_s), u"the run is not held"_s);
    }};
    go();
    EXPECT_TRUE(holds.empty());
}
