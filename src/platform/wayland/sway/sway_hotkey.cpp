#include "platform/wayland/sway/sway_hotkey.h"

#include "platform/wayland/sway/user_bindings.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QJsonObject>
#include <QSocketNotifier>

#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

SwayHotkey::SwayHotkey()
    : m_command("nop plum " + QByteArray::number(getpid()))
{
}

SwayHotkey::~SwayHotkey()
{
    unregisterHotkey();
    m_notifier.reset();
}

bool SwayHotkey::listen()
{
    if (m_notifier)
        return true;
    const QJsonObject answer = m_bindings.ask(SwaySocket::Kind::Subscribe, "[\"binding\"]").object();
    if (!answer.value("success"_L1).toBool())
        return false;
    m_notifier = std::make_unique<QSocketNotifier>(m_bindings.descriptor(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &SwayHotkey::readEvents);
    return true;
}

bool SwayHotkey::registerHotkey(quint32 modifiers, quint32 virtualKey)
{
    unregisterHotkey();
    if (virtualKey < 'A' || virtualKey > 'Z' || !listen())
        return false;
    QString combination;
    if (modifiers & Alt)
        combination += u"Mod1+"_s;
    if (modifiers & Control)
        combination += u"Ctrl+"_s;
    if (modifiers & Shift)
        combination += u"Shift+"_s;
    combination += QChar(static_cast<char16_t>(virtualKey)).toLower();

    const QJsonObject config = m_commands.ask(SwaySocket::Kind::GetConfig).object();
    if (bindsKeys(config.value("config"_L1).toString(), combination))
        return false;
    const QString claim = QFile::decodeName(qgetenv("SWAYSOCK")) + u".plum-"_s + combination;
    if (m_claim.claim(claim) == FileClaim::Outcome::HeldByAnother)
        return false;
    if (!m_commands.run("bindsym --no-warn " + combination.toLatin1() + ' ' + m_command)) {
        m_claim.release();
        return false;
    }
    m_combination = combination;
    return true;
}

void SwayHotkey::unregisterHotkey()
{
    if (m_combination.isEmpty())
        return;
    m_commands.run("unbindsym " + std::exchange(m_combination, {}).toLatin1());
    m_claim.release();
}

quint32 SwayHotkey::now()
{
    return static_cast<quint32>(QDeadlineTimer::current(Qt::PreciseTimer).deadline());
}

void SwayHotkey::readEvents()
{
    while (const auto event = m_bindings.nextEvent()) {
        const QJsonObject binding
            = QJsonDocument::fromJson(event->text).object().value("binding"_L1).toObject();
        if (!m_combination.isEmpty() && binding.value("command"_L1).toString().toUtf8() == m_command)
            Q_EMIT fired(now());
    }
    // Sway has gone, and its socket would be readable for ever.
    if (m_bindings.descriptor() < 0)
        m_notifier->setEnabled(false);
}

} // namespace plum
