// Runs the scripts of docs/tasks.md as they stand there, against real programs. Only the address of their
// server is replaced, since each test has a port of its own.

#include "desktop/support/launcher_desktop.h"
#include "desktop/support/script_test.h"
#include "support/test_server.h"

#include <QImage>
#include <QTcpSocket>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostLines = 25;

// The script below a heading of the page.
QString taskCalled(const QString &heading)
{
    QFile page(QStringLiteral(PLUM_DOCS_FOLDER "/tasks.md"));
    EXPECT_TRUE(page.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(page.readAll());
    const QString script
        = text.section(u"\n## "_s + heading + u'\n', 1).section(u"```plum\n"_s, 1).section(u"```"_s, 0, 0);
    EXPECT_FALSE(script.isEmpty()) << heading.toStdString();
    EXPECT_LE(script.count(u'\n'), mostLines);
    return script;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

class Tasks : public ScriptTest<DesktopTest>
{
protected:
    void SetUp() override { startDesktop(u"openbox"_s); }

    void TearDown() override
    {
        for (QProcess *process : {&other, &another}) {
            process->kill();
            process->waitForFinished();
        }
        ScriptTest::TearDown();
    }

    void start(const QString &heading, int port = 0)
    {
        const QString script = taskCalled(heading).replace(u"localhost:8080"_s, u"127.0.0.1:%1"_s.arg(port));
        ScriptTest::start(script.split(u'\n'));
    }

    // Serves the test's folder.
    void serve(int port)
    {
        server().start(other, u"python3"_s,
            {u"-m"_s, u"http.server"_s, QString::number(port), u"--bind"_s, u"127.0.0.1"_s, u"-d"_s,
                folder()});
        ASSERT_TRUE(other.waitForStarted(test::patience));
    }

    static bool answers(int port)
    {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
        return socket.waitForConnected();
    }

    QString path(const QString &name) const { return folder() + u'/' + name; }

    QProcess other;
    QProcess another;
};

class AskingTasks : public LauncherDesktop
{
protected:
    void start(const QString &heading)
    {
        writeApp(u"task"_s, taskCalled(heading).split(u'\n'));
        startProgram({programFolder() + u"/config/apps/task/main.wf"_s});
    }
};

} // namespace

TEST_F(Tasks, waitForADownloadAndRenameIt)
{
    const int port = test::freePort();
    write(path(u"served.bin"_s), QByteArray(100'000, 'x'));
    serve(port);
    start(u"Wait for a download and rename it"_s);
    const QString download = u"import os, urllib.request as web\n"
                             "os.chdir('%1')\n"
                             "web.urlretrieve('http://127.0.0.1:%2/served.bin', 'part')\n"
                             "os.rename('part', 'download.zip')\n"_s.arg(folder())
                                 .arg(port);
    ASSERT_TRUE(eventually([&] { return answers(port); }));
    server().start(another, u"python3"_s, {u"-c"_s, download});
    expectGoodEnd();
    const QStringList found = QDir(folder()).entryList({u"* download.zip"_s});
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(QFileInfo(path(found[0])).size(), 100'000);
}

TEST_F(Tasks, fillAFormFromACsv)
{
    write(path(u"people.csv"_s), "Ann,Oslo\r\nBjörk,Århus\r\n");
    const QString form
        = u"zenity --forms --title 'New person' --add-entry Name --add-entry City >> %1/people;"_s;
    server().start(other, u"sh"_s, {u"-c"_s, (form + form).arg(folder())});
    start(u"Fill a form from a CSV"_s);
    expectGoodEnd();
    EXPECT_TRUE(other.waitForFinished(test::patience));
    EXPECT_EQ(contentOf(path(u"people"_s)), "Ann|Oslo\nBjörk|Århus\n");
}

TEST_F(Tasks, tileWindows)
{
    QProcess third;
    const QStringList quiet{u"-geometry"_s, u"40x10+200+200"_s, u"-e"_s, u"sleep 600"_s};
    server().start(other, u"xterm"_s, QStringList{u"-T"_s, u"One"_s} + quiet);
    server().start(another, u"xterm"_s, QStringList{u"-T"_s, u"Two"_s} + quiet);
    server().start(third, u"xterm"_s, QStringList{u"-T"_s, u"Three"_s} + quiet);
    start(u"Tile windows"_s);
    expectGoodEnd();
    int x = 0;
    for (const char *title : {"One", "Two", "Three"}) {
        const QRect frame = view->frameRectangle(view->windowTitled(title));
        EXPECT_EQ(frame.topLeft(), QPoint(x, 0)) << title;
        EXPECT_FALSE(frame.isEmpty());
        x += frame.width();
    }
    third.kill();
    third.waitForFinished();
}

TEST_F(Tasks, typeAUnicodeTableIntoATerminal)
{
    const QString heading = u"Type a Unicode table into a terminal"_s;
    const QStringList rows = taskCalled(heading).section(u'"', 3, 3).split(u',');
    ASSERT_EQ(rows.size(), 3);
    server().start(other, u"env"_s,
        {u"LC_ALL=C.UTF-8"_s, u"xterm"_s, u"-u8"_s, u"-T"_s, u"Table"_s, u"-e"_s,
            u"cat > %1/typed"_s.arg(folder())});
    ASSERT_TRUE(eventually([&] { return QFile::exists(path(u"typed"_s)); }));
    start(heading);
    expectGoodEnd();
    EXPECT_TRUE(other.waitForFinished(test::patience));
    EXPECT_EQ(QString::fromUtf8(contentOf(path(u"typed"_s))), rows.join(u'\n') + u'\n');
}

TEST_F(Tasks, watchAPixelAndReact)
{
    start(u"Watch a pixel and react"_s);
    QImage red(40, 40, QImage::Format_RGB32);
    red.fill(0xffff0000);
    ASSERT_TRUE(red.save(path(u"red.png"_s)));
    const auto light = startProbe(u"light"_s, {300, 250, 200, 200}, path(u"red.png"_s));
    expectGoodEnd();
    EXPECT_EQ(view->pixel(view->pointer()), 0xff0000U);
}

TEST_F(Tasks, retryUntilThePageAnswers)
{
    const int port = test::freePort();
    write(path(u"state.txt"_s), "");
    QDir(folder()).mkdir(u"www"_s);
    write(path(u"www/state.txt"_s), "it is open");
    start(u"Retry until the page answers"_s, port);
    server().start(other, u"sh"_s,
        {u"-c"_s,
            u"sleep 1; exec python3 -m http.server %1 --bind 127.0.0.1 -d %2/www"_s.arg(port).arg(folder())});
    expectGoodEnd();
    EXPECT_EQ(contentOf(path(u"state.txt"_s)), "it is open");
}

TEST_F(Tasks, renameFilesByPattern)
{
    for (const QString &name : {u"IMG_1.jpg"_s, u"IMG_20.jpg"_s, u"other.jpg"_s})
        write(path(name), name.toUtf8());
    start(u"Rename files by pattern"_s);
    expectGoodEnd();
    EXPECT_EQ(QDir(folder()).entryList({u"*.jpg"_s}, QDir::Files, QDir::Name),
        (QStringList{u"holiday 1.jpg"_s, u"holiday 20.jpg"_s, u"other.jpg"_s}));
    EXPECT_EQ(contentOf(path(u"holiday 20.jpg"_s)), "IMG_20.jpg");
}

TEST_F(Tasks, readJson)
{
    const int port = test::freePort();
    write(
        path(u"weather.json"_s), R"({"days": [{"name": "Mon", "high": 7}, {"name": "Tue", "high": -1.5}]})");
    serve(port);
    ASSERT_TRUE(eventually([&] { return answers(port); }));
    start(u"Read JSON"_s, port);
    expectGoodEnd();
    EXPECT_EQ(contentOf(path(u"weather.txt"_s)), "Mon: 7\r\nTue: -1.5\r\n");
}

TEST_F(AskingTasks, askAndBranch)
{
    writeApp(u"task"_s);
    write(u"config/apps/task/list.txt"_s, "old");
    start(u"Ask and branch"_s);
    answerQuestion(u"Keep the file? (yes or no)"_s, u"no"_s);
    ASSERT_TRUE(appears(u"shurubox/tipsbox"_s));
    EXPECT_TRUE(shows(u"shurubox/tipsbox"_s, u"It is put aside."_s));
    EXPECT_FALSE(QFile::exists(programFolder() + u"/config/apps/task/list.txt"_s));
    hands->key(u"Escape"_s);
    expectGoodEnd();
}

TEST_F(AskingTasks, aMenuOfChoices)
{
    start(u"A menu of choices"_s);
    answerQuestion(u"1 tea, 2 coffee"_s, u"7"_s);
    ASSERT_TRUE(shows(u"shurubox/Text1"_s, QString()));
    answerQuestion(u"1 tea, 2 coffee"_s, u"2"_s);
    expectGoodEnd();
    EXPECT_EQ(read(u"config/apps/task/drink.txt"_s), "coffee");
}

} // namespace plum
