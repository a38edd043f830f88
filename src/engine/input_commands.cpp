#include "engine/input_commands.h"

#include "engine/conversions.h"
#include "engine/editions/reason.h"
#include "engine/launcher.h"
#include "engine/text_functions.h"

namespace plum {

namespace {

constexpr QStringView pieceWord = u"enter_";
constexpr QStringView typedWord = u"enter";

constexpr CommandInfo questionInfo(QStringView word)
{
    return {word, {{{u"variable", FieldKind::Variable}, {u"prompt", FieldKind::Text}}},
        u"Asks the user; the script goes on with the answer in the variable.", Touches::Nothing,
        Editions::Both, {{Effect::TakeGiven}}};
}

constexpr CommandInfo pieceInfo{pieceWord,
    {{{u"separator", FieldKind::Text}, {u"variable", FieldKind::Variable}}},
    u"Stores one piece of what was typed after the keyword; the number after enter_ counts from 1.",
    Touches::Nothing, Editions::Both, {{Effect::TakeGiven, 0}}};

constexpr CommandInfo typedInfo{typedWord, {{{u"variable", FieldKind::Variable}}},
    u"Stores what was typed after the keyword.", Touches::Nothing, Editions::Both, {{Effect::TakeGiven}}};

// In edition 1 each of these words stands for all that begin with it.
bool isMeant(QStringView word, QStringView written)
{
    return word == written || ((word == pieceWord || word == typedWord) && written.startsWith(word));
}

} // namespace

std::span<const InputCommands::Row> InputCommands::table() const
{
    static constexpr std::array input{
        Row{questionInfo(u"text"), &InputCommands::ask},
        Row{pieceInfo, &InputCommands::enterPiece},
        Row{typedInfo, &InputCommands::enter},
    };
    static constexpr std::array me{
        Row{questionInfo(u"text_input"), &InputCommands::ask},
        Row{pieceInfo, &InputCommands::enterPiece},
        Row{typedInfo, &InputCommands::enter},
        Row{{u"hide", {}, u"Hides the launcher window."}, &InputCommands::hide},
    };
    return m_namespace == Namespace::Input ? std::span<const Row>(input) : std::span<const Row>(me);
}

Next InputCommands::call(const CommandCall &call)
{
    for (const Row &row : table()) {
        if (isMeant(row.info.word, call.command()))
            return row.routine(*this, call);
    }
    return Next::GoOn;
}

QList<CommandInfo> InputCommands::commands() const
{
    QList<CommandInfo> infos;
    for (const Row &row : table())
        infos += row.info;
    return infos;
}

Next InputCommands::ask(const CommandCall &call)
{
    const QString prompt = call.arg(1);
    const QString variable = call.arg(0);
    m_launcher.showInput(prompt, variable);
    return Next::SuspendForAnswer;
}

void InputCommands::enter(const CommandCall &call)
{
    call.setVariable(call.arg(0), AfterFirstBlank(m_launcher.keywordBoxText()));
}

void InputCommands::enterPiece(const CommandCall &call)
{
    const qsizetype underscore = call.command().lastIndexOf(u'_');
    // Kept: the position, counted from 1, has always been shown to the user here.
    if (call.edition() == Edition::One)
        m_launcher.showMessage({.text = QString::number(underscore + 1)});
    const QString number = call.command().sliced(underscore + 1);
    const QString typed = AfterFirstBlank(m_launcher.keywordBoxText());
    const QStringList pieces = split(typed, call.arg(0));
    const qint32 index = toInt32(toDouble(number) - 1);
    if (call.edition() == Edition::Two && (index < 0 || index >= pieces.size())) {
        call.fail(Reason::tr("there is no piece %1 of what was typed behind the keyword").arg(number));
        return;
    }
    const QString value = pieceAt(pieces, index);
    call.setVariable(call.arg(1), value);
}

void InputCommands::hide(const CommandCall &)
{
    m_launcher.hideLauncher();
}

} // namespace plum
