#include "platform/wayland/sway/user_bindings.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The keys in one order, under one name each.
QStringList normalised(const QString &combination)
{
    QStringList keys = combination.toLower().split(u'+');
    for (QString &key : keys) {
        if (key == "alt"_L1)
            key = u"mod1"_s;
        else if (key == "ctrl"_L1)
            key = u"control"_s;
    }
    keys.sort();
    return keys;
}

} // namespace

bool bindsKeys(const QString &configuration, const QString &combination)
{
    static const QRegularExpression blanks(u"\\s+"_s);
    const QStringList wanted = normalised(combination);
    QHash<QString, QString> variables;
    for (const QString &line : configuration.split(u'\n')) {
        const QStringList words = line.trimmed().split(blanks);
        if (words.size() >= 3 && words[0] == "set"_L1)
            variables.insert(words[1], words[2]);
        if (words[0] != "bindsym"_L1)
            continue;
        const auto keys = std::find_if(
            words.begin() + 1, words.end(), [](const QString &word) { return !word.startsWith("--"_L1); });
        if (keys == words.end())
            continue;
        QStringList bound = keys->split(u'+');
        for (QString &key : bound)
            key = variables.value(key, key);
        if (normalised(bound.join(u'+')) == wanted)
            return true;
    }
    return false;
}

} // namespace plum
