#include "engine/text_commands.h"

#include "engine/conversions.h"
#include "engine/editions/reason.h"
#include "engine/text_functions.h"

#include <QRegularExpression>

namespace plum {

namespace {

constexpr std::array matchWords{
    CommandInfo{u"true", {}, u"The exact letter case."},
    CommandInfo{u"no", {}, u"Any letter case."},
};

} // namespace

std::span<const TextCommands::Row> TextCommands::table()
{
    static constexpr std::array rows{
        Row{{u"replace",
                {{{u"variable", FieldKind::Variable}, {u"source", FieldKind::Text},
                    {u"find", FieldKind::Text}, {u"with", FieldKind::Text},
                    {u"count", FieldKind::Number, u"all"}, {u"start", FieldKind::Number, u"1"},
                    Field{u"match", FieldKind::Choice, u"true"}.oneOf(matchWords)}},
                u"Stores source from the character start on, with find replaced by with at most count times; "
                u"match is true for the exact letter case, no for any."},
            &TextCommands::replace},
        Row{{u"split",
                {{{u"text", FieldKind::Text}, {u"separator", FieldKind::Text},
                    Field{u"variables", FieldKind::Variable}.repeated()}},
                u"Stores the pieces between the separators, each in its variable; the last one takes the "
                u"rest.",
                Touches::Nothing, Editions::Two},
            &TextCommands::splitInto},
        Row{{u"piece",
                {{{u"text", FieldKind::Text}, {u"separator", FieldKind::Text}, {u"number", FieldKind::Number},
                    {u"variable", FieldKind::Variable}}},
                u"Stores one of the pieces between the separators, counted from 1, or from the end with -1.",
                Touches::Nothing, Editions::Two},
            &TextCommands::piece},
        Row{{u"find",
                {{{u"text", FieldKind::Text}, {u"part", FieldKind::Text},
                    {u"variable", FieldKind::Variable}}},
                u"Stores where a part first stands in a text, counted from 1.", Touches::Nothing,
                Editions::Two},
            &TextCommands::find},
        Row{{u"trim", {{{u"text", FieldKind::Text}, {u"variable", FieldKind::Variable}}},
                u"Stores a text without the blanks, tabs and line ends around it.", Touches::Nothing,
                Editions::Two},
            &TextCommands::trim},
        Row{{u"upper", {{{u"text", FieldKind::Text}, {u"variable", FieldKind::Variable}}},
                u"Stores a text in capital letters.", Touches::Nothing, Editions::Two},
            &TextCommands::upper},
        Row{{u"lower", {{{u"text", FieldKind::Text}, {u"variable", FieldKind::Variable}}},
                u"Stores a text in small letters.", Touches::Nothing, Editions::Two},
            &TextCommands::lower},
        Row{{u"match",
                {{{u"text", FieldKind::Text}, {u"pattern", FieldKind::Text},
                    {u"variable", FieldKind::Variable}}},
                u"Stores what a regular expression finds: its first group, or all of it without groups.",
                Touches::Nothing, Editions::Two},
            &TextCommands::match},
    };
    return rows;
}

void TextCommands::replace(const CommandCall &call)
{
    const QString variable = call.arg(0);
    const QString source = call.arg(1);
    const QString find = call.arg(2);
    const QString with = call.arg(3);
    const QString countText = call.arg(4);
    const QString startText = call.arg(5);
    const QString match = call.arg(6);

    const bool exact = match.isEmpty() || match == u"true";
    // Kept in edition 1: what stands before the start is lost.
    QString result;
    if (call.edition() == Edition::Two && !startText.isEmpty())
        result = source.left(toInt32(startText) - 1);
    if (exact || match == u"no") {
        const qint32 count = countText.isEmpty() ? -1 : toInt32(countText);
        const qint32 start = startText.isEmpty() ? 1 : toInt32(startText);
        result
            += replaceFrom(source, find, with, start, count, exact ? Qt::CaseSensitive : Qt::CaseInsensitive);
    }
    call.setVariable(variable, result);
}

void TextCommands::splitInto(const CommandCall &call)
{
    const QString separator = call.arg(1);
    if (separator.isEmpty()) {
        call.fail(Reason::tr("the separator is empty"));
        return;
    }
    const QString text = call.arg(0);
    const QStringList pieces = text.split(separator);
    const QStringList variables = call.list();
    if (pieces.size() < variables.size()) {
        call.fail(
            Reason::tr("there are %1 pieces for %2 variables").arg(pieces.size()).arg(variables.size()));
        return;
    }
    for (qsizetype i = 0; i < variables.size(); ++i) {
        const bool isLast = i + 1 == variables.size();
        call.setVariable(variables[i], isLast ? pieces.sliced(i).join(separator) : pieces[i]);
    }
}

void TextCommands::piece(const CommandCall &call)
{
    const QString separator = call.arg(1);
    const qint32 number = toInt32(call.arg(2));
    const QStringList pieces = separator.isEmpty() ? QStringList(call.arg(0)) : call.arg(0).split(separator);
    const qint64 index = number < 0 ? pieces.size() + qint64(number) : qint64(number) - 1;
    if (index >= 0 && index < pieces.size())
        call.setVariable(call.arg(3), pieces[index]);
    else
        call.fail(Reason::tr("there is no piece %1; there are %2").arg(number).arg(pieces.size()));
}

void TextCommands::find(const CommandCall &call)
{
    const QString part = call.arg(1);
    const qsizetype at = call.arg(0).indexOf(part);
    if (at >= 0)
        call.setVariable(call.arg(2), QString::number(at + 1));
    else
        call.fail(Reason::tr("the text does not hold \"%1\"").arg(part));
}

void TextCommands::trim(const CommandCall &call)
{
    call.setVariable(call.arg(1), call.arg(0).trimmed());
}

void TextCommands::upper(const CommandCall &call)
{
    call.setVariable(call.arg(1), call.arg(0).toUpper());
}

void TextCommands::lower(const CommandCall &call)
{
    call.setVariable(call.arg(1), call.arg(0).toLower());
}

void TextCommands::match(const CommandCall &call)
{
    const QRegularExpression pattern(call.arg(1), QRegularExpression::UseUnicodePropertiesOption);
    if (!pattern.isValid()) {
        call.fail(Reason::tr("the pattern is wrong at character %1: %2")
                      .arg(pattern.patternErrorOffset() + 1)
                      .arg(pattern.errorString()));
        return;
    }
    const QRegularExpressionMatch found = pattern.match(call.arg(0));
    if (found.hasMatch())
        call.setVariable(call.arg(2), found.captured(pattern.captureCount() > 0 ? 1 : 0));
    else
        call.fail(found.isValid() ? Reason::tr("the text does not match %1").arg(pattern.pattern())
                                  : Reason::tr("the pattern takes too long for this text"));
}

} // namespace plum
