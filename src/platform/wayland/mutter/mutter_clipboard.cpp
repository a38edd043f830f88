#include "platform/wayland/mutter/mutter_clipboard.h"

#include "platform/wayland/mutter/desktop_extension.h"

namespace plum {

using namespace Qt::StringLiterals;

MutterClipboard::MutterClipboard(DesktopExtension &extension)
    : m_extension(extension)
{
    m_extension.bus().listen(DesktopExtension::object(), u"ClipboardChanged"_s, this, SIGNAL(changed()));
}

QString MutterClipboard::text()
{
    return QString::fromUtf8(m_extension.clipboardText());
}

void MutterClipboard::setText(const QString &text)
{
    m_extension.setClipboardText(text.toUtf8());
}

void MutterClipboard::clear()
{
    m_extension.setClipboardText({});
}

} // namespace plum
