#include "platform/wayland/mutter/desktop_extension.h"

#include <QDBusArgument>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Bits of a window's flags; the extension has the same.
enum Flag : quint32 {
    Focused = 1,
    Minimised = 2,
    Hidden = 4,
    Here = 8,
    Maximised = 16,
};

QRect readFrame(const QDBusArgument &argument)
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    argument.beginStructure();
    argument >> x >> y >> width >> height;
    argument.endStructure();
    return {x, y, width, height};
}

} // namespace

BusObject DesktopExtension::object()
{
    return {QStringLiteral(PLUM_DOMAIN ".Desktop"),
        u'/' + QStringLiteral(PLUM_DOMAIN ".Desktop").replace(u'.', u'/'),
        QStringLiteral(PLUM_DOMAIN ".Desktop")};
}

std::vector<GnomeWindow> DesktopExtension::windows()
{
    const QDBusMessage answer = m_bus.call(object(), u"Windows"_s);
    if (answer.signature() != "a(iisiiiiu)"_L1)
        return {};
    std::vector<GnomeWindow> all;
    const auto argument = answer.arguments().constFirst().value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        GnomeWindow window;
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        quint32 flags = 0;
        argument.beginStructure();
        argument >> window.handle >> window.process >> window.title >> x >> y >> width >> height >> flags;
        argument.endStructure();
        window.frame = {x, y, width, height};
        window.isFocused = flags & Focused;
        window.isMinimised = flags & Minimised;
        window.isHidden = flags & Hidden;
        window.isMaximised = flags & Maximised;
        window.isHere = flags & Here;
        all.push_back(window);
    }
    argument.endArray();
    return all;
}

QRect DesktopExtension::change(const QString &method, WindowHandle window, const QVariantList &numbers)
{
    const QDBusMessage answer = m_bus.call(object(), method, QVariantList{window} + numbers);
    return answer.signature() == "(iiii)"_L1
        ? readFrame(answer.arguments().constFirst().value<QDBusArgument>())
        : QRect();
}

std::optional<QPoint> DesktopExtension::pointer()
{
    const QDBusMessage answer = m_bus.call(object(), u"Pointer"_s);
    if (answer.signature() != "ii"_L1)
        return {};
    return QPoint(answer.arguments()[0].toInt(), answer.arguments()[1].toInt());
}

void DesktopExtension::settle()
{
    m_bus.call(object(), u"Settle"_s);
}

bool DesktopExtension::lendKeys(std::span<const char32_t> characters)
{
    QList<uint> numbers;
    for (const char32_t character : characters)
        numbers.push_back(character);
    const QDBusMessage answer = m_bus.call(object(), u"LendKeys"_s, {QVariant::fromValue(numbers)});
    return answer.signature() == "b"_L1 && answer.arguments().constFirst().toBool();
}

void DesktopExtension::giveKeysBack()
{
    m_bus.call(object(), u"GiveKeysBack"_s);
}

bool DesktopExtension::grabKeys(const QString &accelerator)
{
    const QDBusMessage answer = m_bus.call(object(), u"GrabKeys"_s, {accelerator});
    return answer.signature() == "b"_L1 && answer.arguments().constFirst().toBool();
}

void DesktopExtension::releaseKeys()
{
    m_bus.call(object(), u"ReleaseKeys"_s);
}

QByteArray DesktopExtension::clipboardText()
{
    return m_bus.call(object(), u"ClipboardText"_s).arguments().value(0).toByteArray();
}

void DesktopExtension::setClipboardText(const QByteArray &text)
{
    m_bus.call(object(), u"SetClipboardText"_s, {text});
}

} // namespace plum
