#pragma once

#include "support/program_log.h"

#include <QProcess>
#include <QRect>

#include <xcb/xcb.h>

namespace plum {

class XServer;

// A window of another program, and what that program has seen.
class Probe
{
public:
    // Where a picture is shown in the window, in physical pixels.
    static constexpr QPoint picturePlace{60, 120};

    // Starts the program; `rectangle` is that of the window without a frame. With a `picture`, a file's path,
    // the window shows it.
    Probe(const XServer &server, const QString &logPath, const QString &title, const QRect &rectangle,
        const QString &picture = {});
    ~Probe();
    Q_DISABLE_COPY_MOVE(Probe)

    // Waits until the program has made its window.
    bool hasStarted();
    xcb_window_t window() const { return m_window; }

    // Everything seen since the last forget(), oldest first.
    QStringList seen() const { return m_log.seen(); }
    // Only what begins with one of `words`.
    QStringList seen(const QStringList &words) const { return m_log.seen(words); }
    void forget() { m_log.forget(); }

    // Waits until the program has seen `event`.
    bool sees(const QString &event) const;

    // The program hangs from now on.
    void stop();

    bool waitForEnd() { return m_process.waitForFinished(); }
    QProcess &process() { return m_process; }

private:
    test::ProgramLog m_log;
    QProcess m_process;
    xcb_window_t m_window = XCB_NONE;
};

} // namespace plum
