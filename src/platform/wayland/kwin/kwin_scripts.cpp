#include "platform/wayland/kwin/kwin_scripts.h"

#include "platform/wayland/kwin/kwin_bus.h"

#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMutex>
#include <QWaitCondition>

#include <optional>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 2000; // milliseconds
constexpr auto answersPath = "/Answers"_L1;
constexpr auto answersInterface = "org.plum_launcher.Plum.Answers"_L1;

KWinObject scripting()
{
    return {u"org.kde.KWin"_s, u"/Scripting"_s, "org.kde.kwin.Scripting"_L1};
}

} // namespace

// The object that scripts call.
class KWinAnswers final : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override
    {
        const QVariantList arguments = message.arguments();
        if (message.interface() != answersInterface || arguments.size() != 2)
            return false;
        bus.send(message.createReply());
        const QMutexLocker locker(&m_mutex);
        if (arguments[0].toString() == m_wanted) {
            m_answer = arguments[1].toString();
            m_arrived.wakeAll();
        }
        return true;
    }

    // An answer to anything else comes too late.
    void want(const QString &name)
    {
        const QMutexLocker locker(&m_mutex);
        m_wanted = name;
        m_answer.reset();
    }

    std::optional<QString> wait()
    {
        const QDeadlineTimer deadline(patience);
        QMutexLocker locker(&m_mutex);
        while (!m_answer) {
            if (!m_arrived.wait(&m_mutex, deadline))
                return {};
        }
        return m_answer;
    }

private:
    QMutex m_mutex;
    QWaitCondition m_arrived;
    QString m_wanted;
    std::optional<QString> m_answer;
};

KWinScripts::KWinScripts(KWinBus &bus)
    : m_bus(bus)
    , m_answers(std::make_unique<KWinAnswers>())
    , m_file(qEnvironmentVariable("XDG_RUNTIME_DIR", u"/tmp"_s) + u"/plum-XXXXXX.js"_s)
{
    m_answers->moveToThread(&m_thread);
    m_thread.start();
    m_bus.connection().registerVirtualObject(answersPath, m_answers.get());
}

KWinScripts::~KWinScripts()
{
    m_bus.connection().unregisterObject(answersPath);
    m_thread.quit();
    m_thread.wait();
}

bool KWinScripts::write(const QByteArray &script)
{
    if (!m_file.isOpen() && !m_file.open())
        return false;
    return m_file.resize(0) && m_file.seek(0) && m_file.write(script) == script.size() && m_file.flush();
}

QJsonValue KWinScripts::evaluate(const QString &definitions, const QString &expression)
{
    const QString own = m_bus.connection().baseService();
    const QString name = u"plum%1-%2"_s.arg(own).arg(++m_count);
    // In a list, so that every value has a text.
    const QString script
        = u"%1\ncallDBus(\"%2\", \"%3\", \"%4\", \"take\", \"%5\", JSON.stringify([%6]));\n"_s.arg(
            definitions, own, answersPath, answersInterface, name, expression);
    if (own.isEmpty() || !write(script.toUtf8()))
        return QJsonValue::Undefined;
    m_answers->want(name);
    const QDBusMessage loaded = m_bus.call(scripting(), "loadScript"_L1, {m_file.fileName(), name});
    if (loaded.type() != QDBusMessage::ReplyMessage)
        return QJsonValue::Undefined;
    // Not the script by its number, which another process's may have too. What runs already is not run again.
    m_bus.tell(scripting(), "start"_L1);
    const std::optional<QString> answer = m_answers->wait();
    m_bus.tell(scripting(), "unloadScript"_L1, {name});
    return answer ? QJsonDocument::fromJson(answer->toUtf8()).array().at(0) : QJsonValue::Undefined;
}

} // namespace plum
