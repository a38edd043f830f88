#include "stopping/stop_hotkey.h"

#include "platform/global_hotkey.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

struct Modifier
{
    QLatin1StringView name;
    quint32 flag;
};

constexpr std::array modifiers{Modifier{QLatin1StringView("alt"), GlobalHotkey::Alt},
    Modifier{QLatin1StringView("ctrl"), GlobalHotkey::Control},
    Modifier{QLatin1StringView("shift"), GlobalHotkey::Shift}};

} // namespace

StopHotkey stopHotkeyFromText(const QString &text)
{
    StopHotkey hotkey;
    for (const QString &piece : text.split(u'+')) {
        const QString name = piece.trimmed().toLower();
        const auto modifier = std::ranges::find(modifiers, name, &Modifier::name);
        const bool isLetter = name.size() == 1 && name[0] >= u'a' && name[0] <= u'z';
        if (modifier != modifiers.end())
            hotkey.modifiers |= modifier->flag;
        else if (isLetter && hotkey.virtualKey == 0)
            hotkey.virtualKey = static_cast<quint8>(name[0].toUpper().unicode());
        else
            return {};
    }
    return hotkey.modifiers == 0 || hotkey.virtualKey == 0 ? StopHotkey() : hotkey;
}

} // namespace plum
