#include "contract/real_desktop.h"

#include "platform/screen.h"
#include "support/event_log.h"
#include "support/program_log.h"
#include "support/wait_until.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

namespace plum::contract {

using namespace Qt::StringLiterals;
using test::waitUntil;

namespace {

// One run of the peer program, which ends with this object.
class Run final : public PeerProgram
{
public:
    Run(const QString &logPath, const QStringList &task)
        : m_log(logPath)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedChannels);
        m_process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/" PLUM_CONTRACT_PEER),
            QStringList{logPath} + task);
    }
    ~Run() override { kill(); }
    Q_DISABLE_COPY_MOVE(Run)

    QString answer(const QString &word) override { return m_log.last(word); }
    bool hasEnded() override { return m_process.state() == QProcess::NotRunning; }

    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    test::ProgramLog &log() { return m_log; }

private:
    test::ProgramLog m_log;
    QProcess m_process;
};

class RealWindow final : public PeerWindow
{
public:
    RealWindow(const QString &logPath, const QString &title, const QRect &inside)
        : m_going(logPath + u".goes-on"_s)
        , m_run(logPath,
              {u"window"_s, title,
                  u"%1,%2,%3,%4"_s.arg(inside.x()).arg(inside.y()).arg(inside.width()).arg(inside.height()),
                  m_going})
    {
    }

    WindowHandle handle() override
    {
        return static_cast<WindowHandle>(m_run.answer(u"window"_s).toULongLong());
    }
    QRect frame() override { return test::rectangleFromText(m_run.answer(u"frame"_s)); }
    QRect inside() override { return test::rectangleFromText(m_run.answer(u"inside"_s)); }
    QStringList seen(const QStringList &words) override { return m_run.log().seen(words); }
    void forget() override { m_run.log().forget(); }
    void kill() override { m_run.kill(); }
    void goOn() override { EXPECT_TRUE(QFile(m_going).open(QIODevice::WriteOnly)); }

private:
    const QString m_going;
    Run m_run;
};

std::string asText(const QRect &r)
{
    return u"%1,%2 %3x%4"_s.arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()).toStdString();
}

bool shows(Screen &screen, QPoint point, quint32 colour)
{
    const Capture capture = screen.capture({point, QSize(1, 1)});
    return !capture.isEmpty() && (capture.pixels.front() & 0xffffff) == colour;
}

} // namespace

std::unique_ptr<Platform> RealDesktop::createPlatform()
{
    return plum::createPlatform(QCoreApplication::applicationFilePath());
}

QString RealDesktop::newLog()
{
    return m_folder.filePath(u"%1.log"_s.arg(++m_logs));
}

std::unique_ptr<PeerWindow> RealDesktop::openWindow(
    Platform &platform, const QString &title, const QRect &inside)
{
    auto window = std::make_unique<RealWindow>(newLog(), title, inside);
    QElapsedTimer sinceAsked;
    sinceAsked.start();
    const bool isReady = waitUntil([&] {
        if (window->handle() == 0 || window->frame().isEmpty())
            return false;
        if (platform.windows().foreground() != window->handle()
            || window->seen({u"focus in"_s}).size() <= window->seen({u"focus out"_s}).size()) {
            // Some window managers leave the keyboard where it is.
            constexpr qint64 patience = 1000; // milliseconds
            if (sinceAsked.elapsed() > patience) {
                platform.windows().activate(window->handle());
                sinceAsked.restart();
            }
            return false;
        }
        return window->frame() == platform.windows().rectangle(window->handle())
            && shows(platform.screen(), window->inside().topLeft(), PeerWindow::topLeftCorner)
            && shows(platform.screen(), window->inside().bottomRight(), PeerWindow::bottomRightCorner);
    });
    if (!isReady) {
        const QRect said = platform.windows().rectangle(window->handle());
        ADD_FAILURE() << "window " << window->handle() << ", in front " << platform.windows().foreground()
                      << ", frame " << asText(window->frame()) << " or " << asText(said) << ", saw "
                      << window->seen({QString()}).join(u"; "_s).toStdString();
        return nullptr;
    }
    window->forget();
    return window;
}

std::unique_ptr<PeerProgram> RealDesktop::start(const QStringList &task)
{
    return std::make_unique<Run>(newLog(), task);
}

} // namespace plum::contract
