#pragma once

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

namespace plum {

// A sway without a screen, ready when the constructor returns. It ends with this object or with the test's
// process. Sway refuses to run as root, so it then runs as the user "nobody", in a folder of that user's.
class SwaySession
{
public:
    // `configuration` are further lines of sway's. Windows float, as on other desktops; where tiled ones are
    // is sway's own choice.
    explicit SwaySession(const QStringList &configuration = {});
    ~SwaySession();
    Q_DISABLE_COPY_MOVE(SwaySession)

    // False when sway did not come up.
    bool isReady() const { return m_isReady; }

    // Makes this the desktop of the test's own process and of all programs that it starts from now on.
    void useAsDesktop() const;

private:
    bool start(const QStringList &configuration);

    QTemporaryDir m_runtime;
    QProcess m_sway;
    QString m_display;
    QString m_socket;
    bool m_isReady = false;
};

} // namespace plum
