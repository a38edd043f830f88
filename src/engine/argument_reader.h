#pragma once

#include <QString>

namespace plum {

class Clipboard;
class Launcher;
class Pointer;
class ScriptFolders;
class Shell;
class TextFiles;
class VariableStore;
struct RunState;

// What an unknown `set.` variable stands for. The numbers are those of the script language's own flag.
enum class UnknownVariable {
    IsEmpty = 0,
    IsItsName = 1,
};

// The one way from a line's argument text to values: picks a piece, takes off quotes, fills templates in,
// resolves variables and restores escaped commas.
//
//   "a,b"                            a text in quotes stands for itself, commas and all
//   set.name                         a variable; also os., str., me. and mouse.
//   Hello +?+!+(set.name)            a template: each +?+ takes the next name of the list at the end
//   hello                            nothing: without quotes and without "." there is no value
class ArgumentReader
{
public:
    // What variables are read from.
    struct Sources
    {
        RunState &state;
        Launcher &launcher;
        Clipboard &clipboard;
        Pointer &pointer;
        Shell &shell;
        const ScriptFolders &folders;
        TextFiles &files;
    };

    explicit ArgumentReader(const Sources &sources)
        : m_from(sources)
    {
    }

    // Piece `index` (from 0) of `text` split at `separator`, evaluated. A text that is one quoted piece as a
    // whole, and a text without the separator, answer every index. The empty separator never splits.
    // An index beyond the pieces raises a subscript error (9).
    QString GetArg(const QString &text, const QString &separator, int index, UnknownVariable unknown) const;

    QString EvalArg(const QString &piece, UnknownVariable unknown) const;

    // The value of a variable reference; the token itself when its prefix is not one of the language's, and
    // the empty text when it has no "." at all. Never fails: what cannot be read is empty.
    QString ExpandVar(const QString &token, UnknownVariable unknown) const;

    // Where results go.
    VariableStore &variables() const;

private:
    QString fillTemplate(const QString &piece, UnknownVariable unknown) const;
    QString osValue(QStringView name) const;
    QString setValue(const QString &name, UnknownVariable unknown) const;
    QString meValue(QStringView name) const;
    QString mouseValue(QStringView name) const;

    Sources m_from;
};

} // namespace plum
