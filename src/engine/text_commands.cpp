#include "engine/text_commands.h"

#include "engine/conversions.h"
#include "engine/text_functions.h"

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

} // namespace plum
