#include "upgrade/line_upgrade.h"

#include "check/edition1/command_traits.h"
#include "engine/edition2/fields.h"
#include "engine/edition2/line_reader.h"
#include "engine/references.h"

#include <algorithm>
#include <array>

namespace plum::upgrade {

using namespace Qt::StringLiterals;
using edition1::Reading;
using edition1::ScriptLine;
using edition1::SingleArgument;
using edition1::Value;

namespace {

constexpr QLatin1StringView slot("+?+");
constexpr QLatin1StringView listStart("+(");

[[noreturn]] void refuse(const QString &reason)
{
    throw Obstacle{reason};
}

QString quoted(QString text)
{
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

// Commands that name the variable of their result by a word of their own.
constexpr QLatin1StringView foundPoint("tarnwick_xy");

// Names that a line of edition 1 gives a value to, as far as it says so itself.
QStringList namesSetBy(const ScriptLine &line)
{
    QStringList names;
    if (line.nameSpace == "set"_L1)
        names += line.command;
    if (line.nameSpace == "os"_L1 && line.command.startsWith("find_"_L1))
        names += foundPoint;
    if (line.arguments) {
        for (const Value &value : line.arguments->values(u',')) {
            if (value.isQuoted)
                names += value.text;
        }
    }
    return names;
}

bool isWord(QStringView text)
{
    return edition2::isName(text);
}

} // namespace

// The arguments of a line, each with the field that it is for.
struct LineUpgrade::Values
{
    QList<Value> values;
    QList<const Field *> fields;
};

LineUpgrade::LineUpgrade(const ScriptVocabulary &vocabulary, const QStringList &script)
    : m_vocabulary(vocabulary)
{
    for (const QString &text : script) {
        if (const auto line = ScriptLine::read(text, 1)) {
            for (const QString &name : namesSetBy(*line))
                m_everSet.insert(name);
        }
    }
}

QString LineUpgrade::upgraded(const QString &text, int number)
{
    const auto line = ScriptLine::read(text, number);
    if (!line)
        return text;
    if (line->startsWithBlank)
        refuse(u"it begins with a blank, for which edition 1 passes over it"_s);
    if (!line->hasDot)
        refuse(u"it has no dot, so edition 1 takes the command of the line before"_s);
    if (line->nameSpace == "while"_L1)
        return repetition(*line);
    if (line->nameSpace == "set"_L1)
        return assignment(*line);
    return command(*line);
}

void LineUpgrade::finish() const
{
    if (m_isInLoop)
        refuse(u"its while.end is missing"_s);
}

// The lines between run once at least.
QString LineUpgrade::repetition(const ScriptLine &line)
{
    if (line.command == "end"_L1) {
        if (!std::exchange(m_isInLoop, false))
            refuse(u"there is no while.start for it"_s);
        return u"repeat.end"_s;
    }
    if (line.command != "start"_L1)
        refuse(u"there is no command %1, and edition 1 passes over it"_s.arg(line.head()));
    if (std::exchange(m_isInLoop, true))
        refuse(u"a while inside a while repeats other lines than one expects"_s);
    const QList<Value> values = line.arguments ? line.arguments->values(u',') : QList<Value>();
    if (values.size() != 2 || !values[0].isLiteral() || values[0].text != "count"_L1)
        refuse(u"its mode is not \"count\", so that nothing is repeated"_s);
    if (!values[1].isLiteral())
        refuse(
            u"how often it repeats is not written as a number, and edition 1 goes through once even for 0"_s);
    bool isCount = false;
    const int count = values[1].text.toInt(&isCount);
    if (!isCount)
        refuse(u"\"%1\" is no whole number"_s.arg(values[1].text));
    return u"repeat.times %1"_s.arg(std::max(count, 1));
}

QString LineUpgrade::assignment(const ScriptLine &line)
{
    if (!line.arguments)
        refuse(u"it takes the value of the line before"_s);
    if (line.hasSecondDot || !isWord(line.command))
        refuse(u"\"%1\" is no name of a variable in edition 2"_s.arg(line.command));
    constexpr Field text{u"value", FieldKind::Text};
    const QString value = written(line.arguments->whole(), text);
    m_set.insert(line.command);
    return u"set.%1 %2"_s.arg(line.command, value);
}

LineUpgrade::Values LineUpgrade::valuesOf(const ScriptLine &line, const CommandInfo &row) const
{
    const edition1::CommandTraits traits = edition1::traitsOf(line.nameSpace, line.command.toLower());
    Values found;
    switch (traits.reading) {
    case Reading::Commas:
        found.values = line.arguments->values(u',');
        break;
    case Reading::Colon:
        found.values = {line.arguments->isOneQuotedText() ? line.arguments->whole()
                                                          : line.arguments->values(u':').first()};
        break;
    case Reading::Whole:
        found.values = {line.arguments->whole()};
        break;
    case Reading::Raw:
        found.values = {{.kind = Value::Kind::Literal, .isQuoted = true, .text = line.arguments->text}};
        break;
    }
    // The words of a choice bring fields of their own.
    for (const Field &field : row.usedFields()) {
        found.fields += &field;
        const Value value = found.values.value(found.fields.size() - 1);
        if (field.kind != FieldKind::Choice || !value.isLiteral())
            continue;
        const auto choice = std::ranges::find(field.choices(), QStringView(value.text), &CommandInfo::word);
        if (choice == field.choices().end() || choice->usedFields().empty())
            continue;
        for (const Field &further : choice->usedFields())
            found.fields += &further;
        break;
    }
    const bool isList = !found.fields.isEmpty() && found.fields.back()->kind == FieldKind::KeyList;
    if (found.values.size() == 1 && traits.single == SingleArgument::AnswersForAll && !isList) {
        while (found.values.size() < found.fields.size())
            found.values += found.values.first();
    }
    // What is too much was never looked at.
    if (!isList && found.values.size() > found.fields.size())
        found.values.resize(found.fields.size());
    while (isList && found.fields.size() < found.values.size())
        found.fields += found.fields.back();
    return found;
}

QString LineUpgrade::command(const ScriptLine &line)
{
    const bool lowers = edition1::traitsOf(line.nameSpace, line.command.toLower()).lowerCasesWord;
    const QString word = lowers ? line.command.toLower() : line.command;
    if (!m_vocabulary.knows(line.nameSpace + u'.' + word) || line.hasSecondDot)
        refuse(u"there is no command %1, and edition 1 passes over it"_s.arg(line.head()));
    const CommandInfo *row = m_vocabulary.find(line.nameSpace, word);
    if (!row || !row->existsIn(Edition::One))
        refuse(u"edition 2 has no command %1"_s.arg(line.head()));
    const QString head = line.nameSpace + u'.' + word;
    if (row->usedFields().empty())
        return head;
    if (!line.arguments)
        refuse(u"it takes the arguments of the line before"_s);

    m_unknownIsEmpty = head == "os.tips"_L1;
    const Values found = valuesOf(line, *row);
    if (head == "text.replace"_L1 && !QStringList{{}, u"1"_s}.contains(found.values.value(5).text))
        refuse(u"edition 1 drops what stands before the start"_s);
    QStringList arguments;
    QStringList names;
    for (qsizetype index = 0; index < found.values.size(); ++index) {
        const Field &field = *found.fields[index];
        const Value &value = found.values[index];
        arguments += written(value, field);
        if (value.isLiteral() && (field.kind == FieldKind::Variable || field.takesVariable))
            names += value.text;
    }
    m_unknownIsEmpty = false;
    for (const QString &name : names + namesSetBy({.nameSpace = line.nameSpace, .command = line.command})) {
        if (m_everSet.contains(name))
            m_set.insert(name);
    }
    while (!arguments.isEmpty() && arguments.back().isEmpty())
        arguments.removeLast();
    return arguments.isEmpty() ? head : head + u' ' + arguments.join(u',');
}

QString LineUpgrade::written(const Value &value, const Field &field)
{
    switch (value.kind) {
    case Value::Kind::Empty:
    case Value::Kind::Nothing:
        return writtenLiteral({}, field);
    case Value::Kind::Literal:
        return writtenLiteral(value.text, field);
    case Value::Kind::Reference:
        return writtenReference(value, field);
    case Value::Kind::Template:
        return writtenTemplate(value);
    case Value::Kind::Broken:
        break;
    }
    refuse(u"its quotes are not what they seem"_s);
}

QString LineUpgrade::writtenLiteral(const QString &text, const Field &field)
{
    using enum FieldKind;
    switch (field.kind) {
    case KeyName:
    case KeyList:
        return isWord(text.toLower()) ? text.toLower() : quoted(text);
    case Variable:
    case Choice:
    case Colour:
        return isWord(text) || text.isEmpty() ? text : quoted(text);
    case Number:
    case Milliseconds:
    case Handle:
        return edition2::isNumber(text) || text.isEmpty() ? text : quoted(text);
    case Point:
    case Offset:
        // One number means both.
        if (edition2::isNumber(text))
            return text + u':' + text;
        return edition2::areCoordinates(text, 2) || text.isEmpty() ? text : quoted(text);
    case Region:
        return edition2::areCoordinates(text, 4) || text.isEmpty() ? text : quoted(text);
    case None:
    case Text:
    case Path:
    case Url:
        break;
    }
    return quoted(text);
}

LineUpgrade::Meaning LineUpgrade::meaningOf(const Value &value) const
{
    if (value.kind == Value::Kind::Literal)
        return {{}, value.text};
    if (value.kind != Value::Kind::Reference)
        return {};
    if (value.prefix != "set"_L1) {
        const QString reference = value.prefix + u'.' + value.name;
        return isReference(reference) ? Meaning{reference, {}} : Meaning{};
    }
    if (m_set.contains(value.name)) {
        if (!isWord(value.name))
            refuse(u"\"%1\" is no name of a variable in edition 2"_s.arg(value.name));
        return {u"set."_s + value.name, {}};
    }
    if (m_everSet.contains(value.name))
        refuse(u"set.%1 may have no value yet, for which edition 1 has words of its own"_s.arg(value.name));
    return {{}, m_unknownIsEmpty ? QString() : value.name};
}

QString LineUpgrade::writtenReference(const Value &value, const Field &field)
{
    if (field.kind == FieldKind::Variable)
        refuse(u"the variable that it fills is named by another one"_s);
    const Meaning meaning = meaningOf(value);
    return meaning.reference ? *meaning.reference : writtenLiteral(meaning.text, field);
}

QString LineUpgrade::writtenTemplate(const Value &value)
{
    const QString text = value.written.first(value.written.indexOf(listStart));
    if (text.endsWith("+?"_L1) && value.slotCount == text.count(slot))
        refuse(u"its last +?+ has no + of its own, and is none for edition 1"_s);
    const auto plain = [](QString part) {
        return part.replace(u'"', u"\"\""_s).replace(u'{', u"{{"_s).replace(u'}', u"}}"_s);
    };
    QString filled;
    qsizetype from = 0;
    for (qsizetype number = 0;; ++number) {
        const qsizetype at = text.indexOf(slot, from);
        const bool isFilled = value.names.size() == 1 || number < value.names.size();
        if (at < 0 || !isFilled)
            break;
        filled += plain(text.sliced(from, at - from));
        const Meaning meaning
            = meaningOf(value.names.size() == 1 ? value.names.first() : value.names[number]);
        if (!meaning.reference)
            filled += plain(meaning.text);
        else
            filled += u'{'
                + (meaning.reference->startsWith("set."_L1) ? meaning.reference->sliced(4)
                                                            : *meaning.reference)
                + u'}';
        from = at + slot.size();
    }
    return u"$\""_s + filled + plain(text.sliced(from)) + u'"';
}

} // namespace plum::upgrade
