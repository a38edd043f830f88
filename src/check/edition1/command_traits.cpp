#include "check/edition1/command_traits.h"

#include <array>

namespace plum::edition1 {

namespace {

struct Row
{
    QStringView nameSpace;
    QStringView command; // empty: all of the namespace
    CommandTraits traits;
};

} // namespace

CommandTraits traitsOf(const QString &nameSpace, const QString &command)
{
    using enum Reading;
    using enum MissingArgument;
    using enum SingleArgument;
    // The first row that fits counts.
    static constexpr std::array rows{
        Row{u"os", u"tips", {.reading = Colon}},
        Row{u"os", u"窗口最小化", {.reading = Raw}},
        Row{u"keyboard", u"send", {.reading = Colon}},
        Row{u"keyboard", u"ensend", {.reading = Colon}},
        Row{u"keyboard", u"key_down", {.reading = Colon}},
        Row{u"keyboard", u"key_up", {.reading = Colon}},
        Row{u"time", u"sleep", {.reading = Colon}},
        Row{u"mouse", u"move", {.emptyValueDoesNothing = true}},
        Row{u"mouse", u"offset", {.emptyValueDoesNothing = true}},
        Row{u"set", u"", {.reading = Whole}},
        Row{u"file", u"open", {.missing = IsEmpty, .lowerCasesWord = true, .unknownChoiceDoesNothing = true}},
        Row{u"file", u"save",
            {.missing = IsEmpty,
                .lowerCasesWord = true,
                .unknownChoiceDoesNothing = true,
                .emptyChoiceDoesNothing = true}},
        Row{u"file", u"call", {.missing = IsEmpty, .lowerCasesWord = true, .anyChoiceCounts = true}},
        Row{u"file", u"", {.missing = IsEmpty, .lowerCasesWord = true}},
        Row{u"window", u"", {.missing = IsEmpty, .has32BitPoints = true, .unknownChoiceDoesNothing = true}},
        Row{u"net", u"post", {.lowerCasesWord = true, .ignoresArguments = true}},
        Row{u"net", u"", {.missing = IsEmpty, .single = LeavesOthersEmpty, .lowerCasesWord = true}},
        Row{u"webbox", u"", {.missing = IsEmpty, .single = LeavesOthersEmpty, .lowerCasesWord = true}},
        Row{u"text", u"", {.lowerCasesWord = true}},
    };
    for (const Row &row : rows) {
        if (row.nameSpace == nameSpace && (row.command.isEmpty() || row.command == command))
            return row.traits;
    }
    return {};
}

} // namespace plum::edition1
