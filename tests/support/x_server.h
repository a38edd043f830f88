#pragma once

#include <QProcess>
#include <QSize>
#include <QString>
#include <QStringList>

namespace plum {

// An X server without a screen, on a display of its own, with a window manager where a test needs one. Both
// are ready when the constructor returns, and both end with this object or with the test's process.
class XServer
{
public:
    // `windowManager` is a program and its arguments; empty for none.
    explicit XServer(QSize screen = {1280, 800}, const QStringList &windowManager = {});
    ~XServer();
    Q_DISABLE_COPY_MOVE(XServer)

    // False when the server, or the window manager that was asked for, did not come up.
    bool isReady() const { return m_ready; }

    // What a program needs in DISPLAY.
    QString display() const { return m_display; }

    // Makes this the display of the test's own process and of all programs that it starts from now on.
    void useAsDisplay() const;

    // Starts `program` on this display and returns at once. The process ends with its object.
    void start(QProcess &process, const QString &program, const QStringList &arguments = {}) const;

    // How many processes of that name run on this display, whoever started them.
    qsizetype processes(const QByteArray &program) const;

private:
    bool startServer(QSize screen);
    bool startWindowManager(const QStringList &windowManager);

    QProcess m_server;
    QProcess m_windowManager;
    QString m_display;
    bool m_ready = false;
};

} // namespace plum
