#include "check/edition1/key_rules.h"

#include "check/findings/check_words.h"
#include "check/findings/nearest_word.h"
#include "commands/key_names.h"

#include <array>

namespace plum::edition1 {

using namespace Qt::StringLiterals;

namespace {

bool isModifier(const Value &value)
{
    const QString key = value.text.toLower();
    return key == "ctrl"_L1 || key == "shift"_L1 || key == "alt"_L1 || key == "win"_L1;
}

// Lines that press a button and those that release it.
struct ButtonRow
{
    QLatin1StringView presses;
    QLatin1StringView releases;
};
constexpr std::array buttons{
    ButtonRow{"l_down"_L1, "l_up"_L1},
    ButtonRow{"r_down"_L1, "r_up"_L1},
};

} // namespace

void judgeKey(Report &report, int line, const Value &value)
{
    if (value.kind == Value::Kind::Reference || value.kind == Value::Kind::Template
        || value.kind == Value::Kind::Broken)
        return;
    const QString item = value.isQuoted ? value.text : value.written;
    if (value.kind == Value::Kind::Nothing) {
        report.add(line, value.column, u"key",
            CheckWords::tr("%1 without quotes is nothing, and the key without a name is Z; write \"%2\".")
                .arg(item, item.trimmed()));
        return;
    }
    if (item.isEmpty()) {
        report.add(line, value.column, u"key", CheckWords::tr("The key without a name is Z."));
        return;
    }
    QStringList sent;
    for (const KeyName &row : keycodeasc()) {
        if (!row.returned || row.name.isEmpty())
            continue;
        if (row.name == item.toLower())
            return;
        sent += row.name.toString();
    }
    report.add(line, value.column, u"key",
        item.toLower() == "z"_L1
            ? CheckWords::tr("\"z\" sends nothing; the key without a name, \"\", is Z.")
            : CheckWords::tr("\"%1\" sends nothing.%2").arg(item, didYouMean(item, sent)));
}

void judgeKeys(Report &report, const ScriptLine &line, const QList<Value> &values)
{
    for (qsizetype i = 0; i < values.size(); ++i) {
        judgeKey(report, line.number, values[i]);
        if (i > 0 && line.command == "hotkey"_L1 && isModifier(values[i]) && !isModifier(values[i - 1]))
            report.add(line.number, values[i].column, u"key-order",
                CheckWords::tr("%1 is pressed behind %2, which does not see it any more.")
                    .arg(values[i].text, values[i - 1].written));
    }
}

void HeldKeys::take(const ScriptLine &line)
{
    if (line.nameSpace == "mouse"_L1) {
        for (const auto &[presses, releases] : buttons) {
            if (line.command == presses)
                m_pressedIn.insert(line.head(), line.number);
            else if (line.command == releases)
                m_pressedIn.remove(u"mouse."_s + presses);
        }
        return;
    }
    if (line.nameSpace != "keyboard"_L1 || !line.arguments)
        return;
    const Value key = line.arguments->whole();
    if (line.command == "key_down"_L1 && key.isLiteral())
        m_pressedIn.insert(key.text.toLower(), line.number);
    else if (line.command == "key_up"_L1 && key.isLiteral())
        m_pressedIn.remove(key.text.toLower());
    else if (line.command == "key_up"_L1)
        m_pressedIn.clear();
}

void HeldKeys::finish(Report &report) const
{
    for (auto it = m_pressedIn.constBegin(); it != m_pressedIn.constEnd(); ++it)
        report.add(it.value(), 1, u"never-released",
            CheckWords::tr("No line below releases what this one presses."));
}

} // namespace plum::edition1
