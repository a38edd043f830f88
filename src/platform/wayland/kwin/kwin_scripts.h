#pragma once

#include <QJsonValue>
#include <QTemporaryFile>
#include <QThread>

#include <memory>

namespace plum {

class KWinAnswers;
class KWinBus;

// Expressions that KWin works out inside of itself, where its windows and its pointer are objects of
// JavaScript. KWin reads a script from a file, runs it, and the script sends the result over the bus.
class KWinScripts
{
public:
    explicit KWinScripts(KWinBus &bus);
    ~KWinScripts();
    Q_DISABLE_COPY_MOVE(KWinScripts)

    // The value of `expression`, in front of which `definitions` stand. Undefined when KWin does not answer
    // within two seconds. The user interface does not run meanwhile.
    QJsonValue evaluate(const QString &definitions, const QString &expression);

private:
    bool write(const QByteArray &script);

    KWinBus &m_bus;
    std::unique_ptr<KWinAnswers> m_answers;
    QThread m_thread; // takes the answers in while the caller's thread waits
    QTemporaryFile m_file;
    quint64 m_count = 0;
};

} // namespace plum
