#pragma once

#include "engine/command_table.h"
#include "platform/session.h"

namespace plum {

class Clipboard;
class Launcher;
class Notices;
class Paths;
class PointActions;
class ProgramRunner;
class Screen;
class ScreenSearch;
class TextCodec;
class Windows;
struct RunState;

// The namespace `os`: the screen searches, the clipboard, the session and the machine.
class OsCommands final : public TableHandler<OsCommands>
{
public:
    struct Needs
    {
        RunState &state;
        Paths &paths;
        const ScriptFolders &folders;
        Screen &screen;
        ScreenSearch &search;
        PointActions &actions;
        ProgramRunner &programs;
        TextCodec &codec;
        Clipboard &clipboard;
        Session &session;
        Windows &windows;
        Launcher &launcher;
        Notices &notices;
    };

    explicit OsCommands(const Needs &needs)
        : m_use(needs)
    {
    }

    static std::span<const Row> table();

private:
    void findPicture(const CommandCall &call);
    void findColour(const CommandCall &call);
    void setClipboard(const CommandCall &call);
    void getClipboard(const CommandCall &call);
    Next showTip(const CommandCall &call);
    void lockScreen(const CommandCall &call);
    void turnMonitorOff(const CommandCall &call);
    void logOff(const CommandCall &call);
    void shutDown(const CommandCall &call);
    void restart(const CommandCall &call);
    void run(const CommandCall &call);
    void minimiseByTitle(const CommandCall &call);

    // The fields of a search, as written.
    struct SearchFields
    {
        QString written; // the path or the colour, as the script has it
        QString target; // the same, the path resolved
        QString region;
        QString offset;
        QString action;
    };
    SearchFields searchFields(const CommandCall &call) const;
    template <typename Search>
    void searchAndAct(
        const CommandCall &call, const SearchFields &fields, const QString &notFound, const Search &search);
    void tellFailure(const CommandCall &call, const QString &what);

    Needs m_use;
};

} // namespace plum
