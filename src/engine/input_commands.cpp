#include "engine/input_commands.h"

#include "engine/conversions.h"
#include "engine/launcher.h"
#include "engine/text_functions.h"
#include "engine/variable_store.h"

namespace plum {

void InputCommands::call(const QString &command, const QString &arguments)
{
    const CommandCall line(m_reader, command, arguments);
    if (command.startsWith(u"enter_"))
        enterPiece(line);
    else if (command.startsWith(u"enter"))
        enter(line);
    else if (command == u"hide")
        m_launcher.hideLauncher();
}

QList<CommandInfo> InputCommands::commands() const
{
    return {
        {u"enter_", {{{u"separator", FieldKind::Text}, {u"variable", FieldKind::Variable}}},
            u"Stores one piece of what was typed after the keyword; the number after enter_ counts from 1."},
        {u"enter", {{{u"variable", FieldKind::Variable}}}, u"Stores what was typed after the keyword."},
        {u"hide", {}, u"Hides the launcher window."},
    };
}

void InputCommands::enter(const CommandCall &call)
{
    m_variables.SetVar(call.arg(0), AfterFirstBlank(m_launcher.keywordBoxText()));
}

void InputCommands::enterPiece(const CommandCall &call)
{
    const qsizetype underscore = call.command().lastIndexOf(u'_');
    // Kept: the position, counted from 1, has always been shown to the user here.
    m_launcher.showMessage({.text = QString::number(underscore + 1)});
    const QString number = call.command().sliced(underscore + 1);
    const QString typed = AfterFirstBlank(m_launcher.keywordBoxText());
    const QStringList pieces = split(typed, call.arg(0));
    const QString value = pieceAt(pieces, toInt32(toDouble(number) - 1));
    m_variables.SetVar(call.arg(1), value);
}

} // namespace plum
