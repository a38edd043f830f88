#include "desktop/stop/nested_desktop.h"

#include "desktop/support/conditions.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <sys/prctl.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 60'000; // milliseconds

void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

} // namespace

void NestedDesktop::SetUp()
{
    m_outer.emplace(QSize(900, 700));
    ASSERT_TRUE(m_outer->isReady());
    m_inner.setStandardErrorFile(QProcess::nullDevice());
    m_outer->start(m_inner, u"Xephyr"_s,
        {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"900x700"_s, u"-noreset"_s, u"-no-host-grab"_s,
            u"-nolisten"_s, u"tcp"_s});
    QByteArray number;
    while (!number.endsWith('\n') && m_inner.waitForReadyRead(patience))
        number += m_inner.readAllStandardOutput();
    ASSERT_TRUE(number.endsWith('\n')) << "Xephyr did not start";
    m_innerDisplay = u':' + QString::fromLatin1(number.trimmed());
    hand.emplace(m_outer->display());
    hand->moveTo({450, 350});
    view.emplace(m_innerDisplay);
    // The inner server has seen the hand's pointer: its window is there and has the keyboard.
    ASSERT_TRUE(eventually([this] { return view->pointer() == QPoint(450, 350); }));
    for (const char *name : {"plum", "plumkit"})
        QFile::link(QFileInfo(QStringLiteral(PLUM_PROGRAM)).path() + u'/' + QLatin1StringView(name),
            folder() + u'/' + QLatin1StringView(name));
}

void NestedDesktop::TearDown()
{
    m_program.kill();
    m_program.waitForFinished();
    view.reset();
    hand.reset();
    m_inner.terminate();
    m_inner.waitForFinished();
}

void NestedDesktop::writeOptions(const QByteArray &content) const
{
    writeFile(folder() + u"/config/load/options.ini"_s, content);
}

void NestedDesktop::start(QProcess &process, const QString &name, const QStringList &arguments) const
{
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, m_innerDisplay);
    environment.remove(u"WAYLAND_DISPLAY"_s);
    environment.insert(u"XDG_CACHE_HOME"_s, folder() + u"/cache"_s); // for what runs leave behind
    process.setProcessEnvironment(environment);
    process.start(folder() + u'/' + name, arguments);
}

void NestedDesktop::startScript(const QByteArray &script, const QStringList &kitArguments)
{
    const bool isLater = script.startsWith("//edition:2\n");
    const QByteArray first = isLater ? "//edition:2\nmouse.move \"33:44\"\n" : "mouse.move \"33:44\"\r\n";
    const QString path = folder() + u"/test.wf"_s;
    writeFile(path, first + script.sliced(isLater ? qsizetype(sizeof "//edition:2\n") - 1 : 0));
    hand->moveTo({450, 351});
    hand->moveTo({450, 350});
    ASSERT_TRUE(eventually([this] { return view->pointer() == QPoint(450, 350); }));
    if (kitArguments.isEmpty())
        start(m_program, u"plum"_s, {path});
    else
        start(m_program, u"plumkit"_s, kitArguments + QStringList{path});
    // What comes next may move the pointer on at once.
    ASSERT_TRUE(eventually([this] { return view->pointer() != QPoint(450, 350); }));
}

int NestedDesktop::status()
{
    if (!m_program.waitForFinished(patience) || m_program.exitStatus() != QProcess::NormalExit)
        return -1;
    return m_program.exitCode();
}

bool NestedDesktop::isAnythingDown()
{
    constexpr int escape = 9; // of every keyboard of a PC
    std::vector<int> keys = view->keysDown();
    std::erase(keys, escape);
    return !keys.empty() || view->anyButtonDown();
}

} // namespace plum
