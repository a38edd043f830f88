#pragma once

#include <QString>

namespace plum {

// How the first window of a started program appears, with the values of the Windows show commands.
enum class ShowState {
    Hidden = 0,
    Normal = 1,
    Maximised = 3,
    Minimised = 6,
};

// Starting programs and opening documents the way a desktop shell does.
// Paths may hold either separator.
class Shell
{
public:
    virtual ~Shell() = default;

    // Opens `target` as a double click would: a program starts with `parameters` (split as a shell splits
    // words, without expansion); a folder, a document or an address goes to its default program. Does not
    // wait. Returns false when nothing was started; nothing is shown to the user.
    virtual bool open(const QString &target, const QString &parameters, ShowState state) = 0;

    // Starts a helper program of this system and hands it `commandLine` whole, as one argument.
    // Does not wait. Returns false when the program is missing or cannot be started.
    virtual bool startHelper(const QString &program, const QString &commandLine, ShowState state) = 0;

    // The folder whose content the desktop shows; empty when there is none.
    virtual QString desktopFolder() = 0;

    // What a shortcut file points to; `path` itself when it is no shortcut or cannot be read.
    virtual QString shortcutTarget(const QString &path) = 0;
};

} // namespace plum
