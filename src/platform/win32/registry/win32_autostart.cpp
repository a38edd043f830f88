#include "platform/win32/registry/win32_autostart.h"

#include "platform/paths.h"

#include <QSettings>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

const QString startedPrograms = u"HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run"_s;
const QString valueName = u"Plum"_s;

} // namespace

QString Win32Autostart::command() const
{
    const QString folder = m_paths.programFolder();
    // The root of a drive, "C:\", ends in its separator.
    return u'"' + folder + (folder.endsWith(u'\\') ? u""_s : u"\\"_s) + u"plum.exe\""_s;
}

bool Win32Autostart::isOn() const
{
    const QSettings programs(startedPrograms, QSettings::NativeFormat);
    return programs.value(valueName).toString().compare(command(), Qt::CaseInsensitive) == 0;
}

bool Win32Autostart::setOn(bool isOn)
{
    QSettings programs(startedPrograms, QSettings::NativeFormat);
    if (isOn)
        programs.setValue(valueName, command());
    else if (this->isOn())
        programs.remove(valueName);
    programs.sync();
    return programs.status() == QSettings::NoError && this->isOn() == isOn;
}

} // namespace plum
