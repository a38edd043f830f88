#include "stopping/stoppable_platform.h"

namespace plum {

StoppablePlatform::StoppableKeyboard::~StoppableKeyboard()
{
    if (m_stopped)
        m_stopped->setStop(nullptr);
}

Keyboard &StoppablePlatform::StoppableKeyboard::stoppable()
{
    if (!m_stopped) {
        m_stopped = &m_inner.keyboard();
        m_stopped->setStop(&m_stop);
    }
    return *m_stopped;
}

void StoppablePlatform::StoppableKeyboard::keyEvent(quint8 virtualKey, quint32 flags)
{
    m_stop.check();
    m_stop.ownKeys().note(virtualKey);
    stoppable().keyEvent(virtualKey, flags);
}

bool StoppablePlatform::StoppableKeyboard::typeText(QStringView text, const BeforeCharacter &before)
{
    m_stop.check();
    for (const QChar character : text) {
        if (const char16_t letter = character.toUpper().unicode(); letter >= u'A' && letter <= u'Z')
            m_stop.ownKeys().note(static_cast<quint8>(letter));
    }
    return stoppable().typeText(text, [&] {
        m_stop.check();
        before();
    });
}

void StoppablePlatform::StoppablePointer::moveTo(QPoint point)
{
    m_stop.check();
    m_inner.pointer().moveTo(point);
}

void StoppablePlatform::StoppablePointer::buttonEvent(quint32 flags)
{
    m_stop.check();
    m_inner.pointer().buttonEvent(flags);
}

bool StoppablePlatform::StoppableTimers::waitOrPump(Handle timer)
{
    m_stop.check();
    const bool isDue = m_inner.timers().waitOrPump(timer);
    m_stop.check();
    return isDue;
}

StoppablePlatform::StoppableJavaScript::StoppableJavaScript(Platform &inner, StopSignal &stop)
    : m_inner(inner)
    , m_stop(stop)
{
    QObject::connect(&stop, &StopSignal::raised, &m_listener, [this] { giveUp(); });
}

JavaScript::Result StoppablePlatform::StoppableJavaScript::evaluate(const QString &program)
{
    m_stop.check();
    Result result = m_inner.javaScript().evaluate(program);
    m_stop.check();
    return result;
}

} // namespace plum
