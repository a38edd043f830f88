#include "desktop/support/launcher_desktop.h"

#include <QDir>
#include <QThread>

#include <iostream>
#include <utility>

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
    if (HasFailure())
        tellOfFailure();
    m_launcher.terminate();
    EXPECT_TRUE(m_launcher.state() == QProcess::NotRunning || m_launcher.waitForFinished(test::patience));
    m_eyes.reset();
    hands.reset();
    DesktopTest::TearDown();
}

// What may say why: whether the launcher is alive, what it shows and what it said.
void LauncherDesktop::tellOfFailure()
{
    const bool hasEnded = m_launcher.waitForFinished(1) || m_launcher.state() == QProcess::NotRunning;
    std::cerr << "the launcher "
              << (!hasEnded                                               ? "runs"
                         : m_launcher.exitStatus() == QProcess::CrashExit ? "crashed"
                                                                          : "ended")
              << "; it said \"" << m_launcher.readAllStandardError().toStdString() << "\"\n";
    if (hasEnded || !m_eyes)
        return;
    for (const Control &each : m_eyes->look()) {
        if (each.shown && (each.focus || each.id != 0 || !each.text.isEmpty()))
            std::cerr << each.window.toStdString() << '/' << each.name.toStdString()
                      << (each.focus ? " (focus)" : "") << ' ' << each.place.x() << ',' << each.place.y()
                      << ' ' << each.place.width() << 'x' << each.place.height() << " \""
                      << each.text.toStdString() << "\"\n";
    }
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
    m_eyes.emplace(m_launcher, socket);
    server().start(m_launcher, programFolder() + u"/plum"_s, arguments);
    for (const char *variable : {"PLUM_EYES", "QT_QPA_GENERIC_PLUGINS", "QT_PLUGIN_PATH"})
        qunsetenv(variable);
    qputenv("PATH", path);
    ASSERT_TRUE(m_launcher.waitForStarted(test::patience));
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
    EXPECT_TRUE(answersWhenRipe([this] { return isShown(u"asks/asks"_s); },
        [this] { hands->click(stillControl(u"asks/install"_s).middle()); }));
}

void LauncherDesktop::dragWindow(const QString &name, QPoint grip, QPoint way)
{
    // The program itself may be told where its window is when the drag is over.
    const xcb_window_t window = stillControl(name + u'/' + name).id;
    const auto place = [&] { return view->clientRectangle(window).topLeft(); };
    const QPoint before = place();
    const QPoint there = grip + way;
    hands->pull(grip, there);
    // The way to where the drag is noticed does not count, as everywhere, and where the launcher or the
    // window manager stood still that may be all of it.
    int moves = 0;
    EXPECT_TRUE(eventually([&] {
        hands->moveTo(there + QPoint(++moves % 2 * 30, 0));
        return place() != before;
    }));
    hands->moveTo(there);
    QPoint behind = before;
    EXPECT_TRUE(eventually([&] {
        QThread::msleep(100);
        const QPoint earlier = std::exchange(behind, place());
        return behind == earlier;
    }));
    constexpr QPoint further{-60, -40};
    constexpr int lost = 25; // pixels; the window may still have been on its way, or be held at an edge
    hands->moveTo(there + further);
    EXPECT_TRUE(eventually([&] { return (place() - behind - further).manhattanLength() < lost; }));
    hands->release();
    EXPECT_TRUE(eventually([&] { return see(name + u'/' + name).place.topLeft() == place(); }));
}

} // namespace plum
