// What editors ask about a script that is open.
#include "language_server_fixture.h"
#include "support/temporary_files.h"

#include <QImage>
#include <QUrl>

namespace plum::kit {
namespace {

class LanguageServerAnswers : public LanguageServers
{
protected:
    QJsonValue ask(const QString &method, int line, int character, QJsonObject more = {})
    {
        QJsonObject parameters = at(line, character);
        for (auto it = more.constBegin(); it != more.constEnd(); ++it)
            parameters[it.key()] = it.value();
        const QJsonObject answer = request(u"textDocument/"_s + method, parameters);
        return answer.contains(u"error"_s) ? answer[u"error"_s][u"message"_s] : answer[u"result"_s];
    }

    QString hover(int line, int character)
    {
        return ask(u"hover"_s, line, character)[u"contents"_s][u"value"_s].toString();
    }

    // "line:from-to", or over lines "line:from-line:to".
    static QString range(const QJsonValue &json)
    {
        const QJsonValue start = json[u"start"_s];
        const QJsonValue end = json[u"end"_s];
        const QString from = u"%1:%2"_s.arg(start[u"line"_s].toInt()).arg(start[u"character"_s].toInt());
        return start[u"line"_s] == end[u"line"_s]
            ? u"%1-%2"_s.arg(from).arg(end[u"character"_s].toInt())
            : u"%1-%2:%3"_s.arg(from).arg(end[u"line"_s].toInt()).arg(end[u"character"_s].toInt());
    }

    static QStringList ranges(const QJsonValue &array)
    {
        QStringList all;
        for (const QJsonValue &item : array.toArray())
            all += range(item[u"range"_s]);
        return all;
    }

    // "range text" for each.
    static QStringList edits(const QJsonValue &array)
    {
        QStringList all;
        for (const QJsonValue &edit : array.toArray())
            all += range(edit[u"range"_s]) + u' ' + edit[u"newText"_s].toString();
        return all;
    }
};

TEST_F(LanguageServerAnswers, explainACommandAndItsFields)
{
    open(u"mouse.move \"1:2\"\r\n"_s);
    EXPECT_EQ(hover(0, 8),
        u"Moves the pointer; does nothing without a point.\n\nmouse.move to\n\n"
        "- to: a point x:y"_s);
    EXPECT_EQ(hover(0, 13), u"to: a point x:y"_s);
    EXPECT_EQ(hover(5, 0), QString());
    open(u"//edition:2\ntext.replace a,\"b\"\n"_s);
    EXPECT_TRUE(hover(1, 3).contains(u"\n- count: a number; empty: all"_s)) << hover(1, 3).toStdString();
}

TEST_F(LanguageServerAnswers, showWhatAPictureAndAColourLookLike)
{
    const test::TemporaryFiles files;
    QImage image(512, 128, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    ASSERT_TRUE(image.save(files.folder() + u"/wide.png"_s));
    address = QUrl::fromLocalFile(files.folder() + u"/main.wf"_s).toString();
    open(u"//edition:2\nos.find_pic \"_pfold_/wide.png\",,spot\nos.find_color 00FF00,,,spot\n"_s);
    const QString picture = hover(1, 20);
    EXPECT_TRUE(picture.contains(u"512 x 128 pixels"_s)) << picture.toStdString();
    const QString mark = u"data:image/png;base64,"_s;
    const auto shown = [&mark](const QString &text) {
        const qsizetype start = text.indexOf(mark) + mark.size();
        return QImage::fromData(
            QByteArray::fromBase64(text.sliced(start, text.indexOf(u')', start) - start).toLatin1()));
    };
    EXPECT_EQ(shown(picture).size(), QSize(256, 64));
    EXPECT_EQ(shown(picture).pixelColor(9, 9), QColor(Qt::darkGreen));
    EXPECT_EQ(shown(hover(2, 16)).pixelColor(3, 3), QColor(0, 255, 0));

    image = QImage(20, 10, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(files.folder() + u"/wide.png"_s));
    EXPECT_TRUE(hover(1, 20).contains(u"20 x 10 pixels"_s)); // no old copy
}

TEST_F(LanguageServerAnswers, nameTheFieldThatIsBeingWritten)
{
    open(u"//edition:2\nos.find_color 00FF00,,\"a,b\",\nkeyboard.hotkey ctrl,c\nwindow.set move_window,\n"_s);
    const QJsonValue help = ask(u"signatureHelp"_s, 1, 28);
    EXPECT_EQ(help[u"activeParameter"_s], 3);
    const QJsonValue signature = help[u"signatures"_s][0];
    const QString label = signature[u"label"_s].toString();
    EXPECT_TRUE(label.startsWith(u"os.find_color "_s));
    const QJsonValue third = signature[u"parameters"_s][0];
    EXPECT_EQ(label.sliced(
                  third[u"label"_s][0].toInt(), third[u"label"_s][1].toInt() - third[u"label"_s][0].toInt()),
        u"colour"_s);
    EXPECT_EQ(ask(u"signatureHelp"_s, 1, 16)[u"activeParameter"_s], 0);
    EXPECT_EQ(ask(u"signatureHelp"_s, 2, 22)[u"activeParameter"_s], 0);
    // A word brings fields of its own.
    EXPECT_TRUE(
        ask(u"signatureHelp"_s, 3, 23)[u"signatures"_s][0][u"label"_s].toString().contains(u"window"_s));
    EXPECT_TRUE(ask(u"signatureHelp"_s, 1, 5).isNull());
    EXPECT_TRUE(ask(u"signatureHelp"_s, 0, 5).isNull());
}

TEST_F(LanguageServerAnswers, findVariables)
{
    open(u"//edition:2\nset.who \"😀\"\nos.tips $\"😀{who}\"\nset.who set.who\n"_s);
    EXPECT_EQ(range(ask(u"definition"_s, 2, 13)[u"range"_s]), u"1:4-7"_s);
    EXPECT_EQ(ask(u"definition"_s, 2, 13)[u"uri"_s], address);
    EXPECT_EQ(ranges(ask(u"references"_s, 1, 5)),
        QStringList({u"1:4-7"_s, u"2:13-16"_s, u"3:4-7"_s, u"3:12-15"_s}));
    EXPECT_EQ(
        ranges(ask(u"references"_s, 1, 5, {{u"context"_s, QJsonObject{{u"includeDeclaration"_s, false}}}})),
        QStringList({u"2:13-16"_s, u"3:12-15"_s}));
    EXPECT_EQ(ask(u"documentHighlight"_s, 1, 5)[0][u"kind"_s], 3);
    EXPECT_EQ(ask(u"documentHighlight"_s, 1, 5)[1][u"kind"_s], 2);
    EXPECT_TRUE(ask(u"references"_s, 2, 3).isNull());
}

TEST_F(LanguageServerAnswers, renameVariables)
{
    open(u"set.who \"😀\"\r\nkeyboard.send 😀+?++(set.who)\r\n"_s);
    EXPECT_EQ(range(ask(u"prepareRename"_s, 0, 5)[u"range"_s]), u"0:4-7"_s);
    EXPECT_EQ(edits(ask(u"rename"_s, 1, 25, {{u"newName"_s, u"whom"_s}})[u"changes"_s][address]),
        QStringList({u"0:4-7 whom"_s, u"1:25-28 whom"_s}));
    EXPECT_EQ(ask(u"rename"_s, 0, 5, {{u"newName"_s, u"a,b"_s}}), u"\"a,b\" is no name."_s);
    EXPECT_EQ(ask(u"rename"_s, 0, 1, {{u"newName"_s, u"a"_s}}), u"There is no name here."_s);
    EXPECT_TRUE(ask(u"prepareRename"_s, 0, 1).isNull());
}

TEST_F(LanguageServerAnswers, outlineAScript)
{
    open(u"//edition:2\npart.start greet,who\n    set.a 1\npart.end\n"_s);
    const QJsonValue items = ask(u"documentSymbol"_s, 0, 0);
    EXPECT_EQ(items[0][u"name"_s], u"greet"_s);
    EXPECT_EQ(items[0][u"kind"_s], 12);
    EXPECT_EQ(range(items[0][u"range"_s]), u"1:0-3:8"_s);
    EXPECT_EQ(range(items[0][u"selectionRange"_s]), u"1:11-16"_s);
    EXPECT_EQ(items[0][u"children"_s][1][u"name"_s], u"a"_s);
}

TEST_F(LanguageServerAnswers, layOutTheLinesThatNeedIt)
{
    open(u"//edition:2\nwhen.start 1,is,1\nmouse.click  \n    mouse.click\nwhen.end\n"_s);
    EXPECT_EQ(edits(ask(u"formatting"_s, 0, 0)), QStringList(u"2:0-13     mouse.click"_s));
    open(u"mouse.click\nmouse.click\r\n"_s);
    EXPECT_EQ(edits(ask(u"formatting"_s, 0, 0)), QStringList(u"0:0-1:0 mouse.click\r\n"_s));
}

TEST_F(LanguageServerAnswers, offerWhatMendsAFinding)
{
    open(u"//edition:2\nmouse.clik\nset.a 1\n"_s);
    const auto actionsAt = [this](int line) {
        const QJsonObject place{{u"line"_s, line}, {u"character"_s, 0}};
        return ask(
            u"codeAction"_s, line, 0, {{u"range"_s, QJsonObject{{u"start"_s, place}, {u"end"_s, place}}}});
    };
    const QJsonValue mend = actionsAt(1)[0];
    EXPECT_EQ(mend[u"title"_s], u"Write click"_s);
    EXPECT_EQ(mend[u"kind"_s], u"quickfix"_s);
    EXPECT_EQ(mend[u"isPreferred"_s], true);
    EXPECT_EQ(mend[u"diagnostics"_s][0][u"code"_s], u"syntax"_s);
    EXPECT_EQ(edits(mend[u"edit"_s][u"changes"_s][address]), QStringList(u"1:0-10 mouse.click"_s));
    EXPECT_EQ(actionsAt(1).toArray().size(), 1);
    EXPECT_EQ(actionsAt(0).toArray().size(), 0);
    const QJsonValue silence = actionsAt(2)[0];
    EXPECT_EQ(silence[u"title"_s], u"Say nothing of never-read here"_s);
    EXPECT_EQ(silence[u"isPreferred"_s], false);
    open(u"mouse.click\nmouse.click\n"_s);
    EXPECT_EQ(edits(actionsAt(0)[0][u"edit"_s][u"changes"_s][address]),
        QStringList(u"0:0-3:0 mouse.click\r\nmouse.click\r\n"_s));
}

TEST_F(LanguageServerAnswers, completeTheFilesOfTheApp)
{
    const test::TemporaryFiles files;
    files.write(u"notes.txt"_s, "a");
    address = QUrl::fromLocalFile(files.folder() + u"/main.wf"_s).toString();
    open(u"//edition:2\nfile.read \"_pfold_/n\n"_s);
    const QJsonValue items = ask(u"completion"_s, 1, 20);
    EXPECT_EQ(items.toArray().size(), 1);
    EXPECT_EQ(items[0][u"label"_s], u"_pfold_/notes.txt"_s);
    EXPECT_EQ(range(items[0][u"textEdit"_s][u"range"_s]), u"1:11-20"_s);
}

TEST_F(LanguageServerAnswers, areEmptyForAScriptThatIsNotOpen)
{
    for (const QString &method : {u"completion"_s, u"hover"_s, u"signatureHelp"_s, u"definition"_s,
             u"references"_s, u"documentHighlight"_s, u"prepareRename"_s, u"documentSymbol"_s,
             u"formatting"_s, u"codeAction"_s}) {
        const QJsonValue answer = ask(method, 3, 3);
        EXPECT_TRUE(answer.isNull() || answer.isArray()) << method.toStdString();
    }
}

} // namespace
} // namespace plum::kit
