#include "kit_process.h"
#include "language_server_fixture.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

namespace plum::kit {
namespace {

using namespace Qt::StringLiterals;

TEST_F(LanguageServers, publishFindingsWhenAScriptIsOpenedChangedAndClosed)
{
    EXPECT_EQ(places(open(u"//edition:2\nmouse.clik\n"_s)), QStringList(u"1:6-10 1 syntax"_s));
    const QJsonObject change{{u"textDocument"_s, QJsonObject{{u"uri"_s, address}}},
        {u"contentChanges"_s, QJsonArray{QJsonObject{{u"text"_s, u"//edition:2\nmouse.click\n"_s}}}}};
    EXPECT_EQ(places(notify(u"textDocument/didChange"_s, change)), QStringList());
    EXPECT_EQ(places(open(u"mouse.drag \"1O:2\",\"3:4\"\r\n"_s)),
        QStringList({u"0:0-17 4 old-edition"_s, u"0:11-17 1 wrong-value"_s}));
    const QJsonObject closed
        = notify(u"textDocument/didClose"_s, {{u"textDocument"_s, QJsonObject{{u"uri"_s, address}}}});
    EXPECT_EQ(closed[u"params"_s][u"uri"_s], address);
    EXPECT_EQ(places(closed), QStringList());
}

TEST_F(LanguageServers, takeChangesOfAFewLetters)
{
    open(u"//edition:2\nmouse.clik\nset.a \"😀\"\nos.tips set.a\n"_s);
    const auto change = [](int line, int from, int to, const QString &text) {
        const QJsonObject start{{u"line"_s, line}, {u"character"_s, from}};
        const QJsonObject end{{u"line"_s, line}, {u"character"_s, to}};
        return QJsonObject{
            {u"range"_s, QJsonObject{{u"start"_s, start}, {u"end"_s, end}}}, {u"text"_s, text}};
    };
    // One after the other, each in the text that the one before has left.
    const QJsonObject changes{{u"textDocument"_s, QJsonObject{{u"uri"_s, address}}},
        {u"contentChanges"_s, QJsonArray{change(1, 9, 9, u"c"_s), change(2, 10, 10, u",x y"_s)}}};
    EXPECT_EQ(places(notify(u"textDocument/didChange"_s, changes)), QStringList(u"2:11-14 1 syntax"_s));
    const QJsonObject unopened{{u"textDocument"_s, QJsonObject{{u"uri"_s, u"file:///other.wf"_s}}},
        {u"contentChanges"_s, QJsonArray{QJsonObject{{u"text"_s, u"mouse.clik"_s}}}}};
    EXPECT_EQ(places(notify(u"textDocument/didChange"_s, unopened)), QStringList());
}

TEST_F(LanguageServers, completeWhatCanStandThere)
{
    open(
        u"set.name \"Ann\"\r\nmouse.get_xy \"here\"\r\n\r\nmouse.\r\nkeyboard.send \r\nkeyboard.hotkey \"\r\n"
        "window.get \"\r\nmouse.get_x \"\r\n"_s);
    EXPECT_TRUE(completion(2, 0).contains(u"keyboard"_s));
    EXPECT_TRUE(completion(3, 6).contains(u"click"_s));
    EXPECT_FALSE(completion(3, 6).contains(u"send"_s));
    const QStringList values = completion(4, 14);
    EXPECT_TRUE(values.contains(u"set.name"_s));
    EXPECT_TRUE(values.contains(u"set.here"_s));
    EXPECT_TRUE(values.contains(u"os.path_desktop"_s));
    EXPECT_EQ(completion(5, 17).filter(u"ctrl"_s), QStringList(u"ctrl"_s));
    EXPECT_TRUE(completion(6, 12).contains(u"active_window"_s));
    EXPECT_EQ(completion(7, 13), QStringList({u"here"_s, u"name"_s}));
}

TEST_F(LanguageServers, completeTheOwnWordsOfEdition2)
{
    open(u"//edition:2\n\nrepeat.\n    keyboard.key \n"_s);
    EXPECT_TRUE(completion(1, 0).contains(u"repeat"_s));
    EXPECT_TRUE(completion(2, 7).contains(u"times"_s));
    EXPECT_TRUE(completion(3, 17).contains(u"ctrl"_s));
}

TEST_F(LanguageServers, refuseWhatTheyDoNotKnow)
{
    EXPECT_EQ(request(u"textDocument/unheard"_s)[u"error"_s][u"code"_s], -32601);
    EXPECT_TRUE(server.answer({{u"method"_s, u"$/unheard"_s}}).isEmpty());
}

QByteArray framed(const QJsonObject &message)
{
    const QByteArray content = QJsonDocument(message).toJson(QJsonDocument::Compact);
    return "Content-Length: " + QByteArray::number(content.size()) + "\r\n\r\n" + content;
}

TEST(LanguageServerProcess, talksOnItsStandardStreamsAndEnds)
{
    const QJsonObject document{{u"uri"_s, scriptAddress}, {u"text"_s, u"mouse.klick\r\n"_s}};
    const test::KitRun ended = test::runKit({u"lsp"_s, u"--stdio"_s}, [&document](QProcess &process) {
        process.write(framed({{u"id"_s, 1}, {u"method"_s, u"initialize"_s}, {u"params"_s, QJsonObject()}}));
        process.write(framed({{u"method"_s, u"textDocument/didOpen"_s},
            {u"params"_s, QJsonObject{{u"textDocument"_s, document}}}}));
        process.write(framed({{u"id"_s, 2}, {u"method"_s, u"shutdown"_s}}));
        process.write(framed({{u"method"_s, u"exit"_s}}));
    });
    EXPECT_EQ(ended.status, 0) << ended.errors.toStdString();
    EXPECT_EQ(ended.output.count(u"Content-Length: "_s), 3);
    EXPECT_TRUE(ended.output.contains(u"\"hoverProvider\":true"_s));
    EXPECT_TRUE(ended.output.contains(u"\"code\":\"unknown-command\""_s)) << ended.output.toStdString();
}

// What the process says of a script to an editor that begins the talk with `parameters`.
QString diagnosticsFor(const QJsonObject &parameters)
{
    const QJsonObject document{{u"uri"_s, scriptAddress}, {u"text"_s, u"mouse.klick\r\n"_s}};
    return test::runKit({u"lsp"_s}, [&](QProcess &process) {
        process.write(framed({{u"id"_s, 1}, {u"method"_s, u"initialize"_s}, {u"params"_s, parameters}}));
        process.write(framed({{u"method"_s, u"textDocument/didOpen"_s},
            {u"params"_s, QJsonObject{{u"textDocument"_s, document}}}}));
        process.write(framed({{u"method"_s, u"exit"_s}}));
    }).output;
}

TEST(LanguageServerProcess, speaksTheLanguageOfTheEditor)
{
    const QString english = u"mouse has no command \\\"klick\\\""_s;
    const QString chinese = u"mouse 没有命令“klick”"_s;
    EXPECT_TRUE(diagnosticsFor({{u"locale"_s, u"zh-cn"_s}}).contains(chinese));
    EXPECT_TRUE(diagnosticsFor({{u"locale"_s, u"en-GB"_s}}).contains(english));
    EXPECT_TRUE(diagnosticsFor({}).contains(english));
}

TEST(LanguageServerProcess, endsWith1WhenItsInputEnds)
{
    const test::KitRun ended
        = test::runKit({u"lsp"_s}, [](QProcess &process) { process.closeWriteChannel(); });
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.output, QString());
}

} // namespace
} // namespace plum::kit
