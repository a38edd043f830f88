#pragma once

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

namespace plum {

// A KWin without a screen and the session bus that belongs to it, ready when the constructor returns. Both
// end with this object or with the test's process.
class HeadlessKWin
{
public:
    // `trusted` are the paths of executables to which KWin gives what it gives to an installed Plum.
    explicit HeadlessKWin(const QStringList &trusted);
    ~HeadlessKWin();
    Q_DISABLE_COPY_MOVE(HeadlessKWin)

    // False when KWin did not come up.
    bool isReady() const { return m_isReady; }

    // Makes this the desktop of the test's own process and of all programs that it starts from now on.
    void useAsDesktop() const;

private:
    bool start(const QStringList &trusted);
    bool write(const QString &name, const QByteArray &content) const;
    bool startBus(const QProcessEnvironment &environment);
    bool startKWin(QProcessEnvironment environment);

    QTemporaryDir m_folder;
    QProcess m_bus;
    QProcess m_kwin;
    QString m_busAddress;
    bool m_isReady = false;
};

} // namespace plum
