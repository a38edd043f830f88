#include "check/random_edition2_scripts.h"

#include <algorithm>

namespace plum::test {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView letters("abcdefghijklmnopqrstuvwxyz");
constexpr int deepest = 3; // blocks

// They rest the run, or differ from one run to the next.
const QStringList leftOut{
    u"os.tips"_s, u"input.text"_s, u"me.text_input"_s, u"time.now"_s, u"mouse.while_click"_s};

QString quoted(QString text)
{
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

QStringList indented(QStringList lines)
{
    for (QString &line : lines)
        line.prepend(u"    "_s);
    return lines;
}

} // namespace

RandomEdition2Scripts::RandomEdition2Scripts(const ScriptVocabulary &vocabulary, quint32 seed)
    : m_dice(seed)
{
    for (auto table = vocabulary.tables().constBegin(); table != vocabulary.tables().constEnd(); ++table) {
        for (const CommandInfo &info : *table) {
            const QString head = table.key() + u'.' + info.word.toString();
            if (info.existsIn(Edition::Two) && !info.word.isEmpty() && !leftOut.contains(head))
                m_commands += {head, info};
        }
    }
    std::ranges::sort(m_commands, {}, &Command::head);
}

QStringList RandomEdition2Scripts::next()
{
    QStringList script{u"//edition:2"_s, u"pace.set 0"_s};
    for (const QString &name : {u"a"_s, u"b"_s, u"c"_s, u"d"_s})
        script += u"set.%1 %2"_s.arg(name, m_dice.oneIn(3) ? reference() : quoted(m_dice.text(letters, 6)));
    script += u"set.p me.drag"_s;
    const bool hasPart = m_dice.oneIn(4);
    const bool isBefore = m_dice.oneIn(2);
    QStringList part;
    if (hasPart) {
        part = QStringList{u"part.start work,a,b"_s, u"    set.c set.b"_s, u"    set.d set.a"_s,
                   u"    set.p me.enter_input"_s}
            + indented(lines(4, deepest)) + QStringList{u"    part.return "_s + text(), u"part.end"_s};
    }
    if (isBefore)
        script += part;
    script += lines(12, 0);
    if (hasPart) {
        script += u"part.run work,%1,%2,%3"_s.arg(text(), text(), variable());
        script += lines(4, 0);
    }
    return isBefore ? script : script + part;
}

QStringList RandomEdition2Scripts::lines(int most, int depth)
{
    QStringList all;
    for (int left = 1 + m_dice.below(most); left > 0; --left) {
        if (depth < deepest && m_dice.oneIn(8))
            all += block(depth + 1);
        else if (m_dice.oneIn(3))
            all += QStringList{u"try.start"_s, u"    "_s + line(), u"try.failed"_s, u"try.end"_s};
        else
            all += line();
    }
    return all;
}

QStringList RandomEdition2Scripts::block(int depth)
{
    const QStringList inner = indented(lines(3, depth));
    switch (m_dice.below(4)) {
    case 0:
        return QStringList{u"repeat.times %1"_s.arg(1 + m_dice.below(3))} + inner
            + QStringList{u"repeat.end"_s};
    case 1:
        return QStringList{u"repeat.each %1,%2"_s.arg(text(), variable())} + inner
            + QStringList{u"repeat.end"_s};
    case 2:
        return QStringList{u"when.start "_s + condition()} + inner + QStringList{u"when.else"_s}
        + indented(lines(2, depth)) + QStringList{u"when.end"_s};
    default:
        return QStringList{u"try.start"_s} + inner + QStringList{u"try.failed "_s + variable()}
        + indented(lines(2, depth)) + QStringList{u"try.end"_s};
    }
}

QString RandomEdition2Scripts::line()
{
    if (m_dice.oneIn(12))
        return u"set.p "_s + path();
    if (m_dice.oneIn(3))
        return u"set.%1 %2"_s.arg(variable(), text());
    const Command &command = m_commands[m_dice.below(int(m_commands.size()))];
    if (command.head == "calc.set"_L1)
        return u"calc.set %1,\"%2\""_s.arg(variable(),
            oneOf({u"1 + 2"_s, u"length(os.get_clipboard)"_s, u"me.enter_input"_s, u"length(set.a) * 2"_s}));
    QString head = command.head;
    if (head.endsWith(u"enter_"_s))
        return u"%1%2 %3,%4"_s.arg(head)
            .arg(1 + m_dice.below(2))
            .arg(oneOf({u"\",\""_s, u"\" \""_s, u"\"o\""_s, u"set.a"_s}), variable());
    const QStringList values = arguments(command.info.usedFields());
    return values.isEmpty() ? head : head + u' ' + values.join(u',');
}

// Those at the end that may be left out sometimes are.
QStringList RandomEdition2Scripts::arguments(std::span<const Field> fields)
{
    QStringList values;
    for (std::size_t index = 0; index < fields.size(); ++index) {
        const Field &field = fields[index];
        if (field.kind == FieldKind::KeyList)
            return values + QStringList{oneOf({u"ctrl,c"_s, u"a"_s, u"ctrl,shift,s"_s, u"ctrl,v"_s})};
        if (field.mayRepeat) {
            const int count = 1 + m_dice.below(2);
            for (int each = 0; each < count; ++each)
                values += value(field);
            continue;
        }
        if (field.kind == FieldKind::Choice && !field.choices().empty()
            && !(field.takesVariable && m_dice.oneIn(3)) && !(field.takesNumber && m_dice.oneIn(3))) {
            QList<const CommandInfo *> words;
            for (const CommandInfo &word : field.choices()) {
                if (word.existsIn(Edition::Two))
                    words += &word;
            }
            const CommandInfo &word = *words[m_dice.below(int(words.size()))];
            values += word.word.toString();
            if (!word.usedFields().empty())
                return values + arguments(word.usedFields());
            continue;
        }
        const bool isLast = std::all_of(fields.begin() + static_cast<std::ptrdiff_t>(index), fields.end(),
            [](const Field &each) { return !each.isRequired(); });
        if (isLast && m_dice.oneIn(2))
            break;
        values += !field.fallback.isEmpty() && m_dice.oneIn(4) ? QString() : value(field);
    }
    while (!values.isEmpty() && values.last().isEmpty())
        values.removeLast();
    return values;
}

QString RandomEdition2Scripts::value(const Field &field)
{
    using enum FieldKind;
    switch (field.kind) {
    case Variable:
        return variable();
    case Number:
        return QString::number(1 + m_dice.below(3));
    case Milliseconds:
        return QString::number(1 + m_dice.below(5));
    case Point:
    case Offset:
        return point();
    case Region:
        return point() + u":20:20"_s;
    case Choice:
        return field.takesNumber ? u"1"_s : variable();
    case Handle:
        return oneOf({u"7"_s, u"0"_s});
    case KeyName:
        return oneOf({u"a"_s, u"ctrl"_s, u"enter"_s});
    case Path:
        return path();
    case Colour:
        return u"00FF00"_s;
    case Url:
        return oneOf({u"\"http://localhost/x\""_s, u"$\"http://localhost/{a}\""_s, u"$\"http://{b}/x\""_s,
            u"me.enter_input"_s, u"set."_s + variable()});
    default:
        return text();
    }
}

QString RandomEdition2Scripts::text()
{
    switch (m_dice.below(6)) {
    case 0:
        return quoted(m_dice.text(letters, 6) + u", \"x\""_s);
    case 1:
        return reference();
    case 2:
        return u"$\"{%1}{%2}\""_s.arg(variable(), variable());
    case 3:
        return u"$\"%1{%2}\""_s.arg(m_dice.text(letters, 5), reference());
    default:
        return u"set."_s + variable();
    }
}

QString RandomEdition2Scripts::path()
{
    const QString file = m_dice.text(letters, 5) + u"x.txt"_s;
    switch (m_dice.below(8)) {
    case 0:
        return quoted(file);
    case 7:
        return u"$\"{p}.%1\""_s.arg(file);
    case 1:
        return quoted(u"_pfold_/"_s + file);
    case 2:
        return u"$\"{os.path_desktop}/%1\""_s.arg(file);
    case 3:
        return u"$\"{os.path_package}/{%1}\""_s.arg(variable());
    case 4:
        return u"me.enter_input"_s;
    case 5:
        return u"me.drag"_s;
    default:
        return u"set.p"_s;
    }
}

QString RandomEdition2Scripts::point()
{
    return u"%1:%2"_s.arg(m_dice.below(900)).arg(m_dice.below(900));
}

QString RandomEdition2Scripts::condition()
{
    return oneOf({u"set.%1,is,%2"_s, u"set.%1,has,%2"_s, u"set.%1,is_not,%2"_s}).arg(variable(), text());
}

QString RandomEdition2Scripts::reference()
{
    return oneOf(
        {u"me.enter_input"_s, u"me.enter_input_1"_s, u"me.drag"_s, u"me.drag_text"_s, u"os.get_clipboard"_s,
            u"os.path_desktop"_s, u"os.path_package"_s, u"os.path_pfold"_s, u"mouse.xy"_s, u"str.r"_s});
}

QString RandomEdition2Scripts::variable()
{
    return oneOf({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
}

} // namespace plum::test
