#include "values/calc_commands.h"

#include "engine/editions/reason.h"
#include "engine/variable_store.h"
#include "values/expression.h"

namespace plum {

namespace {

// Namespaces of references whose values do not come from variables.
constexpr std::array<QStringView, 3> otherReferences{u"os.", u"me.", u"mouse."};

} // namespace

std::span<const CalcCommands::Row> CalcCommands::table()
{
    using enum FieldKind;
    using enum Effect;
    static constexpr std::array rows{
        Row{{u"set", {{{u"variable", Variable}, {u"expression", Text}}},
                u"Works an expression out: + - * / %, comparisons, min, max, round, length, set.name.",
                Touches::Nothing, Editions::Two, {{Calculate, 1, ObjectForm::AsWritten}}},
            &CalcCommands::set},
    };
    return rows;
}

void CalcCommands::set(const CommandCall &call)
{
    const auto textOf = [&](QStringView reference) -> std::optional<QString> {
        if (reference.startsWith(u"set.")) {
            const QString *value = call.variables().find(reference.sliced(4).toString());
            return value ? std::optional(*value) : std::nullopt;
        }
        for (const QStringView start : otherReferences) {
            if (reference.startsWith(start))
                return m_reader.ExpandVar(reference.toString(), UnknownVariable::IsEmpty);
        }
        return {};
    };
    const Calculation result = calculated(call.arg(1), textOf);
    if (result.value)
        call.setVariable(call.arg(0), numberText(*result.value));
    else
        call.fail(Reason::tr("%1, at character %2 of the expression").arg(result.problem).arg(result.column));
}

} // namespace plum
