#include "stopping/hand_options.h"

#include "library/settings_file.h"
#include "platform/platform.h"
#include "stopping/stop_hotkey.h"

namespace plum {

void HandOptions::read()
{
    m_file = SettingsFile::options(m_platform.paths(), m_platform.textCodec()).content();
    m_isScoped.clear();
}

QString HandOptions::valueOf(QStringView section, QStringView key) const
{
    return m_file.isEmpty() ? QString() : profileValue(m_file, section, key, m_platform.textCodec());
}

bool HandOptions::isOn(QStringView section, QStringView key) const
{
    return valueOf(section, key).compare(u"on", Qt::CaseInsensitive) == 0;
}

StopHotkey HandOptions::hotkey() const
{
    return stopHotkeyFromText(valueOf(u"stop", u"hotkey"));
}

bool HandOptions::isScoped(const QString &keyword) const
{
    const auto known = m_isScoped.constFind(keyword);
    if (known != m_isScoped.constEnd())
        return *known;
    const bool saysSo = !keyword.isEmpty() && !valueOf(u"scoped", keyword).isEmpty();
    const bool isScoped = saysSo ? isOn(u"scoped", keyword) : isOn(u"stop", u"scoped");
    m_isScoped.insert(keyword, isScoped);
    return isScoped;
}

} // namespace plum
