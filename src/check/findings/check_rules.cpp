#include "check/findings/check_rules.h"

#include <algorithm>
#include <array>

namespace plum {

std::span<const CheckRule> checkRules()
{
    using enum Severity;
    static constexpr std::array rules{
        // The file
        CheckRule{u"lf-line-ends", Error, u"Bare line feeds end no line: the whole file is one line."},
        CheckRule{
            u"mixed-line-ends", Warning, u"Some lines end in a bare line feed and run on into the next."},
        CheckRule{u"encoding", Warning, u"The file is not UTF-8, or cannot be read alike on both systems."},
        CheckRule{u"old-edition", Hint, u"Edition 2 of the language would have said so before the run."},
        // Words
        CheckRule{u"unknown-namespace", Error, u"No namespace has this name: the line does nothing."},
        CheckRule{u"unknown-command", Error, u"The namespace has no such command: the line does nothing."},
        CheckRule{u"no-command", Warning, u"A head without a dot repeats the command of the line before."},
        CheckRule{u"extra-head", Warning, u"What follows the second dot of a head is ignored."},
        CheckRule{u"blank-line-start", Error, u"A line that begins with a blank has no command."},
        // Arguments
        CheckRule{u"unquoted-value", Warning, u"A value without quotes and without a dot is nothing."},
        CheckRule{u"empty-value", Warning, u"The command needs a value where nothing stands."},
        CheckRule{u"blank-around-value", Warning, u"A blank beside the quotes makes a quoted text no text."},
        CheckRule{u"unpaired-quote", Warning, u"A quote has no partner."},
        CheckRule{u"comma-in-quotes", Warning, u"A comma inside one of several quoted texts splits it."},
        CheckRule{u"colon-ends-text", Warning, u"The text ends at its first \":\"."},
        CheckRule{u"missing-arguments", Error, u"The command asks for more arguments than the line has."},
        CheckRule{u"one-for-all", Warning, u"A single argument answers for every field."},
        CheckRule{
            u"inherited-arguments", Warning, u"A line without arguments gets those of the line before."},
        CheckRule{u"surplus-arguments", Warning, u"Arguments behind the last field are ignored."},
        CheckRule{u"wrong-value", Error, u"The value is not what the field takes."},
        CheckRule{u"number-range", Error, u"The number is outside of what the field holds."},
        CheckRule{u"no-effect", Error, u"With this value the command does nothing."},
        CheckRule{u"odd-value", Warning, u"The value is taken in a way that is seldom meant."},
        CheckRule{u"endless-wait", Warning, u"A wait of 0 lasts seven minutes."},
        CheckRule{u"key", Warning, u"This key name sends nothing, or the letter Z."},
        CheckRule{u"key-order", Warning, u"A modifier is pressed behind the key that it is for."},
        CheckRule{u"never-released", Warning, u"A key or button is pressed that no line releases."},
        // Templates and references
        CheckRule{u"template-slots", Warning, u"A template's slots and names do not match in number."},
        CheckRule{u"template-open", Warning, u"A template's list of names has no \")\" at the end."},
        CheckRule{u"quoted-reference", Warning, u"Between quotes a reference is a text like any other."},
        CheckRule{u"unknown-reference", Warning, u"No reference has this name: it is nothing."},
        CheckRule{
            u"unknown-prefix", Warning, u"What is before the dot is no prefix: the text stands for itself."},
        CheckRule{u"never-set", Warning, u"A variable is read that no line sets."},
        CheckRule{u"never-read", Hint, u"A variable is set that no line reads."},
        CheckRule{u"name-case", Warning, u"Two variables differ in letter case alone."},
        CheckRule{u"name-from-value", Hint, u"The name of a variable comes from another variable's value."},
        // Loops and questions
        CheckRule{u"loop-without-start", Warning, u"A while.end has no while.start above it."},
        CheckRule{u"loop-without-end", Warning, u"A while.start has no while.end below it."},
        CheckRule{u"nested-loop", Warning, u"A loop inside a loop does not repeat as expected."},
        CheckRule{u"question-in-loop", Warning, u"After a question or a tip a loop does not go on."},
        CheckRule{u"empty-loop", Warning, u"Each repetition of an empty loop forgets all variables."},
        // The app and the world
        CheckRule{u"missing-file", Warning, u"The app names a file that its folder lacks."},
        CheckRule{u"picture-never-found", Warning, u"The picture cannot be found, or is found anywhere."},
        CheckRule{u"one-machine", Hint, u"A path that exists on one machine alone."},
        CheckRule{u"one-system", Hint, u"This works on one of Windows and Linux alone."},
        CheckRule{u"secret", Warning, u"A password stands in the script in plain text."},
        CheckRule{u"last-line-waits", Hint, u"A script start goes on waiting behind this last line."},
        // Edition 2
        CheckRule{u"syntax", Error, u"The script cannot be read, so none of it runs."},
        CheckRule{u"edition", Error, u"The script asks for an edition of the language that is not known."},
        // The checker's own
        CheckRule{u"suppression", Warning, u"A suppression names no rule, or one that says nothing there."},
    };
    return rules;
}

const CheckRule *checkRule(QStringView id)
{
    const auto rules = checkRules();
    const auto found = std::ranges::find(rules, id, &CheckRule::id);
    return found == rules.end() ? nullptr : &*found;
}

} // namespace plum
