#include "engine/edition2/fields.h"

#include "engine/edition2/line_reader.h"
#include "engine/editions/mistake_words.h"

#include <algorithm>

namespace plum::edition2 {

using namespace Qt::StringLiterals;

namespace {

const CommandInfo *choiceOf(const Field &field, QStringView word)
{
    const auto found = std::ranges::find_if(field.choices(),
        [word](const CommandInfo &choice) { return choice.word == word && choice.existsIn(Edition::Two); });
    return found == field.choices().end() ? nullptr : &*found;
}

bool isRepeated(const Field &field)
{
    return field.mayRepeat || field.kind == FieldKind::KeyList;
}

// Fields that are named with a bare word.
bool takesWord(const Field &field)
{
    return field.kind == FieldKind::Variable || field.kind == FieldKind::Choice
        || field.kind == FieldKind::KeyName || field.kind == FieldKind::KeyList
        || field.kind == FieldKind::Colour;
}

bool isColour(QStringView text)
{
    return text.size() == 6 && std::ranges::all_of(text, [](QChar c) {
        return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
    });
}

QString wordsOf(const Field &field)
{
    QStringList words;
    for (const CommandInfo &choice : field.choices()) {
        if (choice.existsIn(Edition::Two))
            words += choice.word.toString();
    }
    return words.join(u", "_s);
}

QString problemWithChoice(const Field &field, const QString &text)
{
    if (field.choices().empty() || choiceOf(field, text) || (field.takesNumber && isNumber(text)))
        return {};
    if (field.takesVariable)
        return isName(text)
            ? QString()
            : MistakeWords::tr("\"%1\" is neither a word of this command nor a name").arg(text);
    // There are too many keys to name them all.
    if (field.kind == FieldKind::KeyName || field.kind == FieldKind::KeyList)
        return MistakeWords::tr("there is no key called \"%1\"").arg(text);
    return MistakeWords::tr("%1 is one of %2, not \"%3\"").arg(field.name, wordsOf(field), text);
}

QString problemWithVariable(const Field &field, const Value &value)
{
    if (value.form == Form::Reference && value.text.startsWith("set."_L1))
        return MistakeWords::tr("write %1, not %2: here stands the name of a variable")
            .arg(value.text.sliced(4), value.text);
    if ((value.form == Form::Word || value.form == Form::Text) && isName(value.text))
        return {};
    return MistakeWords::tr("%1 is the name of a variable").arg(field.name);
}

class Binder
{
public:
    Binder(const Line &line, const CommandInfo &info, QList<Mistake> &mistakes)
        : m_line(line)
        , m_mistakes(mistakes)
    {
        for (const Field &field : info.usedFields())
            m_fields.push_back(&field);
    }

    BoundLine bind()
    {
        const auto &values = m_line.values;
        std::size_t next = 0;
        for (std::size_t index = 0; index < m_fields.size(); ++index) {
            const Field &field = *m_fields[index];
            if (isRepeated(field)) {
                m_bound.single.push_back({&field, nullptr});
                for (const std::size_t end = endOfRepeated(index, next); next < end; ++next)
                    addRepeated(field, values[next]);
                if (field.isRequired() && !field.mayRepeat && m_bound.repeated.empty())
                    fail(m_line.end(), MistakeWords::tr("%1 is missing").arg(field.name));
                continue;
            }
            const Value *value = next < values.size() ? &values[next++] : nullptr;
            addSingle(field, value, index);
        }
        if (next < values.size() && m_knowsFields)
            fail(values[next].at, MistakeWords::tr("this argument is too much"));
        return std::move(m_bound);
    }

private:
    void fail(Position at, const QString &reason) { m_mistakes += {at, reason}; }

    // The last bare words of a line are for the variables behind the field that repeats.
    std::size_t endOfRepeated(std::size_t index, std::size_t from) const
    {
        const auto &values = m_line.values;
        std::size_t end = values.size();
        for (std::size_t behind = m_fields.size() - 1; behind > index && end > from
             && values[end - 1].form == Form::Word && m_fields[index]->kind != FieldKind::Variable;
             --behind)
            --end;
        return end;
    }

    void addRepeated(const Field &field, const Value &value)
    {
        if (isEmpty(field, value))
            fail(value.at, MistakeWords::tr("%1 is missing").arg(field.name));
        else
            check(field, value);
        m_bound.repeated.push_back({&field, &value});
    }

    void addSingle(const Field &field, const Value *value, std::size_t index)
    {
        if (!value || isEmpty(field, *value)) {
            if (field.isRequired())
                fail(value ? value->at : m_line.end(), MistakeWords::tr("%1 is missing").arg(field.name));
            m_bound.single.push_back({&field, nullptr});
            return;
        }
        check(field, *value);
        m_bound.single.push_back({&field, value});
        if (field.kind == FieldKind::Choice)
            takeFieldsOfChoice(field, *value, index);
    }

    static bool isEmpty(const Field &field, const Value &value)
    {
        return value.form == Form::LeftOut
            || (value.form == Form::Text && value.text.isEmpty() && !takesEmptyText(field));
    }

    void takeFieldsOfChoice(const Field &field, const Value &value, std::size_t index)
    {
        const bool decides = std::ranges::any_of(
            field.choices(), [](const CommandInfo &choice) { return !choice.usedFields().empty(); });
        if (!decides)
            return;
        m_fields.resize(index + 1);
        if (const CommandInfo *choice = choiceOf(field, value.text)) {
            for (const Field &further : choice->usedFields())
                m_fields.push_back(&further);
            return;
        }
        m_knowsFields = false;
        if (value.form == Form::Reference || value.form == Form::Template) {
            fail(value.at,
                MistakeWords::tr("%1 decides what else the line needs and stands there as a word")
                    .arg(field.name));
        }
    }

    void check(const Field &field, const Value &value)
    {
        if (const QString problem = problemOf(field, value); !problem.isEmpty())
            fail(value.at, problem);
    }

    static QString problemOf(const Field &field, const Value &value)
    {
        if (field.kind == FieldKind::Variable)
            return problemWithVariable(field, value);
        if (value.form == Form::Reference || value.form == Form::Template)
            return {}; // known when it runs
        if (value.form == Form::Word && !takesWord(field)) {
            const QString problem = isName(value.text)
                ? MistakeWords::tr(
                    "\"%1\" is a bare word; a text stands in quotes, a variable is written set.%1")
                : MistakeWords::tr("\"%1\" is a bare word; a text stands in quotes");
            return problem.arg(value.text);
        }
        return problemWith(field, value.text);
    }

    const Line &m_line;
    QList<Mistake> &m_mistakes;
    std::vector<const Field *> m_fields;
    BoundLine m_bound;
    bool m_knowsFields = true; // false behind a choice that is not known
};

} // namespace

BoundLine bindFields(const Line &line, const CommandInfo &info, QList<Mistake> &mistakes)
{
    return Binder(line, info, mistakes).bind();
}

bool takesEmptyText(const Field &field)
{
    return field.kind == FieldKind::Text;
}

QString problemWith(const Field &field, const QString &text)
{
    switch (field.kind) {
    case FieldKind::None:
    case FieldKind::Text:
    case FieldKind::Path:
    case FieldKind::Url:
    case FieldKind::KeyName:
    case FieldKind::KeyList:
        return field.choices().empty() ? QString() : problemWithChoice(field, text);
    case FieldKind::Variable:
        return isName(text) ? QString() : MistakeWords::tr("\"%1\" is no name of a variable").arg(text);
    case FieldKind::Choice:
        return problemWithChoice(field, text);
    case FieldKind::Number:
        return isNumber(text) ? QString()
                              : MistakeWords::tr("%1 is a number, not \"%2\"").arg(field.name, text);
    case FieldKind::Milliseconds:
        return isNumber(text) && !text.startsWith(u'-')
            ? QString()
            : MistakeWords::tr("%1 is a number of milliseconds, not \"%2\"").arg(field.name, text);
    case FieldKind::Handle:
        return isNumber(text) && !text.contains(u'.')
            ? QString()
            : MistakeWords::tr("%1 is the number of a window, not \"%2\"").arg(field.name, text);
    case FieldKind::Point:
    case FieldKind::Offset:
        return areCoordinates(text, 2)
            ? QString()
            : MistakeWords::tr("%1 is written x:y, not \"%2\"").arg(field.name, text);
    case FieldKind::Region:
        return areCoordinates(text, 4)
            ? QString()
            : MistakeWords::tr("%1 is written x:y:width:height, not \"%2\"").arg(field.name, text);
    case FieldKind::Colour:
        return isColour(text) ? QString()
                              : MistakeWords::tr("%1 is written RRGGBB, not \"%2\"").arg(field.name, text);
    }
    Q_UNREACHABLE();
}

} // namespace plum::edition2
