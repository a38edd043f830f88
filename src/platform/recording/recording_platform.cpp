#include "platform/recording/recording_platform.h"

#include "platform/typed_text.h"

#include <QDir>
#include <QScopeGuard>

namespace plum::recording {

using namespace Qt::StringLiterals;

void RecordingPointer::moveTo(QPoint point)
{
    at = bounds.isEmpty() ? point
                          : QPoint(std::clamp(point.x(), bounds.left(), bounds.right()),
                              std::clamp(point.y(), bounds.top(), bounds.bottom()));
    m_log.add(u"move %1 %2"_s.arg(point.x()).arg(point.y()));
}

void RecordingPointer::buttonEvent(quint32 flags)
{
    m_log.add(u"mouse %1"_s.arg(flags));
}

void RecordingKeyboard::keyEvent(quint8 virtualKey, quint32 flags)
{
    m_log.add(u"key %1 %2"_s.arg(virtualKey).arg(flags));
}

bool RecordingKeyboard::typeText(QStringView text, const BeforeCharacter &before)
{
    const auto bad = std::ranges::find_if(text, [](QChar c) {
        return c.category() == QChar::Other_Control && c != u'\r' && c != u'\n' && c != u'\t';
    });
    auto typed = text.begin();
    const auto leave = qScopeGuard([&] { m_log.add(u"type %1"_s.arg(QStringView(text.begin(), typed))); });
    while (typed != bad) {
        before();
        typed += unitsOfCharacter({typed, bad});
    }
    return bad == text.end();
}

void RecordingClipboard::setText(const QString &text)
{
    content = text;
    m_log.add(u"clipboard set "_s + text);
    Q_EMIT changed();
}

void RecordingClipboard::clear()
{
    content.clear();
    m_log.add(u"clipboard clear"_s);
    Q_EMIT changed();
}

void RecordingWindows::record(const char *what, WindowHandle window)
{
    m_log.add(u"window %1 %2"_s.arg(QLatin1StringView(what)).arg(window));
}

WindowHandle RecordingWindows::byTitle(const QString &title)
{
    const WindowHandle window = titles.value(title);
    return m_hidden.contains(window) ? 0 : window;
}

std::vector<WindowHandle> RecordingWindows::stacking()
{
    std::vector<WindowHandle> shown = order;
    std::erase_if(shown, [this](WindowHandle window) { return m_hidden.contains(window); });
    return shown;
}

// To the front, with the keyboard.
void RecordingWindows::raise(WindowHandle window)
{
    if (!rectangles.contains(window) || m_hidden.contains(window) || m_minimised.contains(window))
        return;
    std::erase(order, window);
    order.insert(order.begin(), window);
    foregroundWindow = window;
}

void RecordingWindows::activate(WindowHandle window)
{
    record("activate", window);
    m_minimised.remove(window);
    raise(window);
}

void RecordingWindows::hide(WindowHandle window)
{
    record("hide", window);
    m_hidden.insert(window);
}

void RecordingWindows::show(WindowHandle window)
{
    record("show", window);
    m_hidden.remove(window);
    raise(window);
}

void RecordingWindows::minimise(WindowHandle window)
{
    record("minimise", window);
    m_hidden.remove(window);
    m_minimised.insert(window);
}

void RecordingWindows::maximise(WindowHandle window)
{
    record("maximise", window);
    m_hidden.remove(window);
    m_minimised.remove(window);
}

void RecordingWindows::moveTo(WindowHandle window, QPoint corner)
{
    if (const auto known = rectangles.find(window); known != rectangles.end())
        known->moveTopLeft(corner);
    m_log.add(u"window move %1 %2 %3"_s.arg(window).arg(corner.x()).arg(corner.y()));
    raise(window);
}

Capture RecordingScreen::captureFrom(const std::vector<quint32> &source, const QRect &region)
{
    constexpr qint64 most = 1 << 28; // pixels
    if (region.isEmpty() || static_cast<qint64>(region.width()) * region.height() > most)
        return {};
    m_captured.assign(static_cast<size_t>(region.width()) * static_cast<size_t>(region.height()), 0);
    for (int y = 0; y < region.height(); ++y) {
        for (int x = 0; x < region.width(); ++x) {
            const QPoint at = region.topLeft() + QPoint(x, y);
            if (QRect(QPoint(), size).contains(at)) {
                m_captured[static_cast<size_t>(y * region.width() + x)]
                    = source[static_cast<size_t>(at.y() * size.width() + at.x())];
            }
        }
    }
    return {region.size(), m_captured};
}

bool RecordingShell::open(const QString &target, const QString &parameters, ShowState state)
{
    m_log.add(u"open %1|%2|%3"_s.arg(target, parameters).arg(static_cast<int>(state)));
    return succeeds;
}

bool RecordingShell::startHelper(const QString &program, const QString &commandLine, ShowState state)
{
    m_log.add(u"helper %1|%2|%3"_s.arg(program, commandLine).arg(static_cast<int>(state)));
    return succeeds;
}

Session::Outcome RecordingSession::record(const char *what)
{
    m_log.add(u"session "_s + QLatin1StringView(what));
    return outcome;
}

bool RecordingHotkey::registerHotkey(quint32 modifiers, quint32 virtualKey)
{
    m_log.add(u"hotkey register %1 %2"_s.arg(modifiers).arg(virtualKey));
    return succeeds;
}

void RecordingHotkey::unregisterHotkey()
{
    m_log.add(u"hotkey unregister"_s);
}

JavaScript::Result RecordingJavaScript::evaluate(const QString &program)
{
    m_log.add(u"javascript "_s + program);
    return answer;
}

QString RecordingTextCodec::fromSystem(QByteArrayView bytes)
{
    return QString::fromUtf8(bytes);
}

QByteArray RecordingTextCodec::toSystem(QStringView text)
{
    return text.toUtf8();
}

QString RecordingTextCodec::fromGb2312(QByteArrayView bytes)
{
    return QString::fromLatin1(bytes);
}

QString RecordingTextCodec::fromUtf8(QByteArrayView bytes)
{
    return QString::fromUtf8(bytes);
}

QString RecordingPaths::toSystem(const QString &path) const
{
    const QString there = QString(path).replace(u'\\', u'/');
    if (onDisk)
        return onDisk(there);
    if (root.isEmpty() || there == root || there.startsWith(root + u'/'))
        return there;
    // A drive is a folder, and nothing lies above the root.
    return root + QDir::cleanPath(u'/' + QString(there).remove(u':'));
}

WaitableTimers::Created RecordingTimers::create(const QString &name)
{
    if (!hasRoom)
        return {};
    const bool existed = std::ranges::find(m_names, name) != m_names.end();
    m_names.insert(++m_last, name);
    m_log.add(u"timer create %1 %2"_s.arg(name, existed ? u"183"_s : u"0"_s));
    return {m_last, existed};
}

void RecordingTimers::set(Handle, qint64 dueTime)
{
    m_log.add(u"timer set %1 %2"_s.arg(static_cast<qint32>(dueTime >> 32)).arg(static_cast<qint32>(dueTime)));
}

bool RecordingTimers::waitOrPump(Handle timer)
{
    if (onPump)
        onPump();
    return ++m_pumped[timer] >= pumps;
}

void RecordingTimers::close(Handle timer)
{
    if (m_names.remove(timer) > 0)
        m_log.add(u"timer close"_s);
}

RecordingPlatform::RecordingPlatform()
    : m_autostart(log)
    , m_clipboard(log)
    , m_hotkey(log)
    , m_javaScript(log)
    , m_keyboard(log)
    , m_pointer(log)
    , m_session(log)
    , m_shell(log)
    , m_timers(log)
    , m_windows(log)
{
}

void RecordingPlatform::releaseDesktop()
{
    m_pointer.releaseAll();
    m_keyboard.releaseAll();
    m_clipboard.outliveProcess();
}

} // namespace plum::recording
