#include "platform/wayland/kwin/kwin_hotkey.h"

#include "platform/wayland/kwin/kwin_bus.h"
#include "platform/wayland/wire/event_time.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QKeySequence>

#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// KWin's name for the program, by which its shortcuts are kept together.
constexpr auto component = "plum"_L1;

KWinObject shortcuts()
{
    return {u"org.kde.kglobalaccel"_s, u"/kglobalaccel"_s, "org.kde.KGlobalAccel"_L1};
}

} // namespace

KWinHotkey::KWinHotkey(KWinBus &bus)
    : m_bus(bus)
{
    qDBusRegisterMetaType<QList<int>>();
}

KWinHotkey::~KWinHotkey()
{
    unregisterHotkey();
}

// KWin has the object that tells of presses from the first shortcut on.
bool KWinHotkey::listen()
{
    if (m_isListening)
        return true;
    const QDBusMessage answer = m_bus.call(shortcuts(), "getComponent"_L1, {QString(component)});
    const auto path = answer.arguments().value(0).value<QDBusObjectPath>().path();
    m_isListening = !path.isEmpty()
        && m_bus.connection().connect(shortcuts().service, path, u"org.kde.kglobalaccel.Component"_s,
            u"globalShortcutPressed"_s, this, SLOT(take(QString, QString, qlonglong)));
    return m_isListening;
}

bool KWinHotkey::hold(const QString &action, int key)
{
    // Set now, and whatever was set in an earlier session does not count.
    constexpr uint isPresent = 2;
    constexpr uint noAutoloading = 4;
    const QStringList id{component, action, u"Plum"_s, action};
    m_bus.call(shortcuts(), "doRegister"_L1, {id});
    const QDBusMessage answer = m_bus.call(
        shortcuts(), "setShortcut"_L1, {id, QVariant::fromValue(QList<int>{key}), isPresent | noAutoloading});
    return answer.type() == QDBusMessage::ReplyMessage
        && qdbus_cast<QList<int>>(answer.arguments().value(0)).contains(key);
}

bool KWinHotkey::registerHotkey(quint32 modifiers, quint32 virtualKey)
{
    unregisterHotkey();
    if (virtualKey < 'A' || virtualKey > 'Z')
        return false;
    int key = static_cast<int>(virtualKey); // Qt has the same numbers
    if (modifiers & Alt)
        key |= Qt::ALT;
    if (modifiers & Control)
        key |= Qt::CTRL;
    if (modifiers & Shift)
        key |= Qt::SHIFT;
    const QString action = QKeySequence(key).toString(QKeySequence::PortableText);
    const QString claim = u"%1/plum-kwin-%2"_s.arg(qEnvironmentVariable("XDG_RUNTIME_DIR"), action);
    if (m_claim.claim(claim) == FileClaim::Outcome::HeldByAnother)
        return false;
    const QDBusMessage holder = m_bus.call(shortcuts(), "action"_L1, {key});
    const QString heldBy = holder.arguments().value(0).toStringList().value(0);
    m_action = action;
    if (holder.type() == QDBusMessage::ReplyMessage && (heldBy.isEmpty() || heldBy == component)
        && hold(action, key) && listen())
        return true;
    unregisterHotkey();
    return false;
}

void KWinHotkey::unregisterHotkey()
{
    if (m_action.isEmpty())
        return;
    m_bus.call(shortcuts(), "unregister"_L1, {QString(component), std::exchange(m_action, {})});
    m_claim.release();
}

quint32 KWinHotkey::now()
{
    return eventTime();
}

void KWinHotkey::take(const QString &of, const QString &action, qlonglong)
{
    if (of == component && action == m_action && !m_action.isEmpty())
        Q_EMIT fired(now());
}

} // namespace plum
