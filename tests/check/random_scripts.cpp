#include "check/random_scripts.h"

#include <algorithm>

namespace plum::test {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView letters("abcdefghijkmnopqrstuvwxy");

QString quoted(const QString &text)
{
    return u'"' + text + u'"';
}

bool isQuestion(const QString &head)
{
    return head == "os.tips"_L1 || head == "input.text"_L1 || head == "me.text_input"_L1;
}

} // namespace

RandomScripts::RandomScripts(const ScriptVocabulary &vocabulary, quint32 seed)
    : m_dice(seed)
{
    for (auto table = vocabulary.tables().constBegin(); table != vocabulary.tables().constEnd(); ++table) {
        for (const CommandInfo &info : *table) {
            if (info.existsIn(Edition::One) && table.key() != "while"_L1)
                m_commands += {table.key() + u'.' + info.word.toString(), info};
        }
    }
    std::ranges::sort(m_commands, {}, &Command::head);
}

QStringList RandomScripts::next()
{
    m_names.clear();
    QStringList script;
    if (m_dice.oneIn(3))
        script += u"//guide:"_s + m_dice.text(letters, 20);
    for (int lines = 1 + m_dice.below(12); lines > 0; --lines)
        m_dice.oneIn(12) ? addLoop(script) : addLine(script, false);
    return script + QStringList{u"mouse.click"_s};
}

void RandomScripts::addLoop(QStringList &script)
{
    script += u"while.start \"count\",\"%1\""_s.arg(2 + m_dice.below(3));
    for (int lines = 1 + m_dice.below(3); lines > 0; --lines)
        addLine(script, true);
    script += u"while.end"_s;
}

void RandomScripts::addLine(QStringList &script, bool isInLoop)
{
    Command command = m_commands[m_dice.below(static_cast<int>(m_commands.size()))];
    if (isInLoop && isQuestion(command.head))
        command = m_commands.front();
    m_set.clear();
    if (command.head == "set."_L1) {
        script += u"set.%1 %2"_s.arg(newName(), text(true));
    } else if (command.head == "keyboard.key_down"_L1 || command.head == "keyboard.key_up"_L1) {
        const QString held = key();
        script += u"keyboard.key_down "_s + held;
        script += u"keyboard.key_up "_s + held;
    } else if (command.head.startsWith("mouse.l_"_L1) || command.head.startsWith("mouse.r_"_L1)) {
        const QString button = command.head.first(7);
        script += command.head == "mouse.r_click"_L1 ? QStringList{command.head}
                                                     : QStringList{button + u"_down"_s, button + u"_up"_s};
    } else if (command.head.endsWith(u"enter_"_s)) {
        script += u"%1%2 \"_,_\",%3"_s.arg(command.head).arg(1 + m_dice.below(3)).arg(quoted(newName()));
    } else if (command.head == u"os.窗口最小化"_s) {
        script += command.head + u" Report "_s + m_dice.text(letters, 5) + u'x';
    } else if (command.head == "file.save"_L1) {
        script += u"set.%1 %2"_s.arg(newName(), text(true));
        script += u"file.save os.path_desktop,%1,\"append\""_s.arg(quoted(m_set.front()));
    } else if (command.head == "keyboard.ensend"_L1) {
        script += command.head + u" \"0123456789100000000000000020000scrambled\""_s;
    } else {
        const QString rest = arguments(command);
        script += rest.isEmpty() ? command.head : command.head + u' ' + rest;
    }
    m_names += m_set;
}

QString RandomScripts::arguments(const Command &command)
{
    QList<Field> fields;
    for (const Field &field : command.info.usedFields())
        fields += field;
    if (fields.isEmpty())
        return {};
    if (fields.front().kind == FieldKind::KeyList)
        return keys(command.head == "keyboard.hotkey"_L1);
    QStringList values;
    if (command.head.startsWith("window."_L1)) {
        const CommandInfo &word = oneOf(fields.front());
        values += quoted(word.word.toString());
        fields = {};
        for (const Field &field : word.usedFields())
            fields += field;
    }
    const bool isOnly = values.isEmpty() && fields.size() == 1;
    for (const Field &field : fields)
        values += value(command, field, isOnly);
    return values.join(u',');
}

QString RandomScripts::value(const Command &command, const Field &field, bool isOnly)
{
    using enum FieldKind;
    if (!field.fallback.isEmpty() && field.fallback != u"nothing" && m_dice.oneIn(3)
        && command.head != "mouse.while_click"_L1)
        return u"\"\""_s;
    switch (field.kind) {
    case Variable:
        return quoted(newName());
    case Number:
        return quoted(number(9));
    case Milliseconds:
        return quoted(number(5000));
    case Point:
    case Offset:
        return quoted(point());
    case Region:
        return quoted(point() + u':' + number(200) + u':' + number(200));
    case Choice:
        return choice(field);
    case Handle:
        return quoted(number(99));
    case KeyName:
        return key();
    case Path:
        return m_dice.oneIn(2) ? quoted(m_dice.text(letters, 8) + u".txt"_s) : u"os.path_desktop"_s;
    case Colour:
        return quoted(u"%1"_s.arg(m_dice.below(0x1000000), 6, 16, QChar(u'0')).toUpper());
    case Url:
        return quoted(u"http://localhost/"_s + m_dice.text(letters, 8));
    default:
        return text(isOnly);
    }
}

const CommandInfo &RandomScripts::oneOf(const Field &field)
{
    QList<const CommandInfo *> words;
    for (const CommandInfo &word : field.choices()) {
        if (word.existsIn(Edition::One))
            words += &word;
    }
    return *words[m_dice.below(static_cast<int>(words.size()))];
}

QString RandomScripts::choice(const Field &field)
{
    if (field.takesVariable && m_dice.oneIn(3))
        return quoted(newName());
    if (field.takesNumber && m_dice.oneIn(3))
        return quoted(number(20));
    return quoted(oneOf(field).word.toString());
}

// Where a text is the only argument, commas and colons need no care.
QString RandomScripts::text(bool isOnly)
{
    const QString some = m_dice.text(letters, 6);
    switch (m_dice.below(m_names.isEmpty() ? 4 : 7)) {
    case 0:
        return u"\"\""_s;
    case 1:
        return isOnly ? quoted(some + u", and: "_s) : quoted(some + u"_,_ "_s);
    case 2:
        return u"me.enter_input"_s;
    case 3:
        return quoted(some + u" (1.5) ä+b"_s);
    case 4:
        return u"set."_s + knownName();
    case 5:
        return u"a +?+ b+(set.%1)"_s.arg(knownName());
    default:
        return u"a %1+?+ b +?+ c+(set.%2+os.path_desktop)"_s.arg(some, knownName());
    }
}

QString RandomScripts::key()
{
    static const QStringList names{u"a"_s, u"y"_s, u"Ctrl"_s, u"shift"_s, u"alt"_s, u"win"_s, u"enter"_s};
    return quoted(names[m_dice.below(static_cast<int>(names.size()))]);
}

QString RandomScripts::keys(bool isCombination)
{
    if (isCombination)
        return m_dice.oneIn(2) ? u"\"ctrl\",\"c\""_s : u"\"ctrl\",\"shift\",\"s\""_s;
    QStringList some{key()};
    while (m_dice.oneIn(2))
        some += key();
    return some.join(u',');
}

QString RandomScripts::number(int most)
{
    return QString::number(1 + m_dice.below(most));
}

QString RandomScripts::point()
{
    return number(1000) + u':' + number(1000);
}

QString RandomScripts::newName()
{
    const QString name = u"v%1"_s.arg(m_names.size() + m_set.size());
    m_set += name;
    return name;
}

QString RandomScripts::knownName()
{
    return m_names[m_dice.below(static_cast<int>(m_names.size()))];
}

} // namespace plum::test
