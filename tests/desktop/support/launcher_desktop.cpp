#include "desktop/support/launcher_desktop.h"

#include <QDir>

namespace plum {

using namespace Qt::StringLiterals;

void LauncherDesktop::prepare(const QString &windowManager, QSize screen)
{
    startDesktop(windowManager, u"us"_s, screen);
    ASSERT_FALSE(HasFatalFailure());
    hands.emplace(server().display());
    ASSERT_TRUE(QDir().mkpath(programFolder()));
    ASSERT_TRUE(QFile::link(program(), programFolder() + u"/plum"_s));
    write(u"config/load/set.ini"_s, "[hotkey]\r\nhotkey=Alt+Z\r\n");

    // The desktop's way to open things is a program that writes down what it is given.
    writeProgram(u"bin/xdg-open"_s,
        "#!/bin/sh\nprintf '%s\\n' \"$1\" >> '" + QFile::encodeName(programFolder()) + "/opened.txt'\n");
}

void LauncherDesktop::TearDown()
{
    m_launcher.terminate();
    EXPECT_TRUE(m_launcher.state() == QProcess::NotRunning || m_launcher.waitForFinished());
    m_eyes.reset();
    hands.reset();
    DesktopTest::TearDown();
}

void LauncherDesktop::write(const QString &name, const QByteArray &content)
{
    const QString path = programFolder() + u'/' + name;
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

void LauncherDesktop::writeProgram(const QString &name, const QByteArray &content)
{
    write(name, content);
    ASSERT_TRUE(QFile::setPermissions(
        programFolder() + u'/' + name, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

void LauncherDesktop::writeApp(const QString &keyword, const QStringList &lines)
{
    write(u"config/apps/%1/main.wf"_s.arg(keyword), (lines.join(u"\r\n"_s) + u"\r\n"_s).toUtf8());
}

QByteArray LauncherDesktop::read(const QString &name) const
{
    QFile file(programFolder() + u'/' + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString LauncherDesktop::resultLine(const QString &value) const
{
    return u"file.save \"%1/result.txt\",%2,\"append\""_s.arg(programFolder(), value);
}

QStringList LauncherDesktop::opened() const
{
    QStringList lines = QString::fromUtf8(read(u"opened.txt"_s)).split(u'\n');
    lines.removeLast();
    return lines;
}

void LauncherDesktop::startProgram(const QStringList &arguments)
{
    const QString socket = folder() + u"/eyes%1"_s.arg(++m_starts);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(programFolder()) + "/bin:" + path);
    qputenv("PLUM_EYES", QFile::encodeName(socket));
    qputenv("QT_QPA_GENERIC_PLUGINS", "eyes");
    qputenv("QT_PLUGIN_PATH", PLUM_EYES_PLUGINS);
    m_eyes.emplace(socket);
    server().start(m_launcher, programFolder() + u"/plum"_s, arguments);
    for (const char *variable : {"PLUM_EYES", "QT_QPA_GENERIC_PLUGINS", "QT_PLUGIN_PATH"})
        qunsetenv(variable);
    qputenv("PATH", path);
    ASSERT_TRUE(m_launcher.waitForStarted());
}

void LauncherDesktop::startLauncher()
{
    startProgram();
    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s)) << m_launcher.readAllStandardError().toStdString();
}

void LauncherDesktop::expectGoodEnd()
{
    ASSERT_TRUE(eventually([this] { return m_launcher.state() == QProcess::NotRunning; }));
    EXPECT_EQ(m_launcher.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_launcher.exitCode(), 0);
}

bool LauncherDesktop::hasFocus(const QString &path)
{
    const Control control = see(path);
    return control.focus && view->hasKeyboard(see(control.window + u'/' + control.window).id);
}

QString LauncherDesktop::focused()
{
    for (const Control &each : m_eyes->look()) {
        if (each.focus)
            return each.window + u'/' + each.name;
    }
    return {};
}

// A place holds when the server has the window where the program believes it to be, twice in a row.
Control LauncherDesktop::stillControl(const QString &path)
{
    Control last;
    const bool found = eventually([&] {
        const Control now = see(path);
        const Control window = see(now.window + u'/' + now.window);
        const bool isStill = now.shown && now.place == last.place && now.rows == last.rows
            && view->isViewable(window.id) && view->clientRectangle(window.id) == window.place;
        last = now;
        return isStill;
    });
    EXPECT_TRUE(found) << path.toStdString() << " is not shown";
    return last;
}

void LauncherDesktop::click(const QString &path, Hands::Button button)
{
    hands->click(stillControl(path).middle(), button);
}

void LauncherDesktop::clickInto(const QString &path)
{
    click(path);
    EXPECT_TRUE(getsFocus(path)) << path.toStdString();
}

QPoint LauncherDesktop::rowOf(const QString &path, const QString &item)
{
    EXPECT_TRUE(eventually([&] { return see(path).items.contains(item); })) << item.toStdString();
    const Control list = stillControl(path);
    const qsizetype row = list.items.indexOf(item);
    return row < 0 ? QPoint() : list.rows[static_cast<size_t>(row)].center();
}

void LauncherDesktop::chooseForApp(const QString &keyword, const QString &item)
{
    hands->click(rowOf(u"frmSet/List"_s, keyword), Hands::Right);
    click(u"list2you/"_s + item);
    EXPECT_TRUE(disappears(u"list2you/"_s + item));
}

void LauncherDesktop::answer(const QString &text, const QString &button)
{
    ASSERT_TRUE(eventually([&] {
        return isShown(u"message/message"_s) && textOf(u"message/message"_s) == text;
    })) << "no message \""
        << text.toStdString() << "\" but \"" << textOf(u"message/message"_s).toStdString() << '"';
    click(u"message/"_s + button);
    ASSERT_TRUE(disappears(u"message/message"_s));
}

void LauncherDesktop::clearEntry()
{
    hands->key(u"ctrl+a"_s);
    hands->key(u"Delete"_s);
}

void LauncherDesktop::answerQuestion(const QString &prompt, const QString &text)
{
    ASSERT_TRUE(shows(u"shurubox/title"_s, prompt));
    ASSERT_TRUE(getsFocus(u"shurubox/Text1"_s));
    hands->type(text);
    ASSERT_TRUE(shows(u"shurubox/Text1"_s, text));
    click(u"shurubox/Label1"_s);
}

void LauncherDesktop::agreeToInstall(const QString &keyword)
{
    ASSERT_TRUE(shows(u"asks/keyword"_s, keyword));
    ASSERT_TRUE(appears(u"asks/asks"_s)); // the text is there before the window is
    EXPECT_TRUE(eventually([&] {
        if (const Control install = see(u"asks/install"_s); install.shown)
            hands->click(install.middle());
        return !isShown(u"asks/asks"_s);
    }));
}

} // namespace plum
