#pragma once

#include "commands/points.h"
#include "engine/command_table.h"
#include "platform/session.h"
#include "search/screen_search.h"

namespace plum {

class Clipboard;
class MouseClicks;
class Notices;
class Pointer;
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
        Pointer &pointer;
        MouseClicks &clicks;
        Clipboard &clipboard;
        Session &session;
        Windows &windows;
        Launcher &launcher;
        Notices &notices;
    };

    explicit OsCommands(const Needs &needs);

    static std::span<const Row> table();

    // What a search can do with the point that it found, by the word in its last field. Any other word is
    // the variable that receives the point.
    struct Action
    {
        QStringView word;
        void (OsCommands::*routine)(const CommandCall &, ScriptPoint);
        QStringView summary;
    };
    static std::span<const Action> actions();

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
    void minimiseByTitle(const CommandCall &call);

    void clickAt(const CommandCall &call, ScriptPoint point);
    void doubleClickAt(const CommandCall &call, ScriptPoint point);
    void rightClick(const CommandCall &call, ScriptPoint point);
    void moveTo(const CommandCall &call, ScriptPoint point);
    void storePoint(const CommandCall &call, ScriptPoint point);
    void storeX(const CommandCall &call, ScriptPoint point);
    void storeY(const CommandCall &call, ScriptPoint point);
    void copyPoint(const CommandCall &call, ScriptPoint point);

    // The fields of a search, as written.
    struct SearchFields
    {
        QString target; // the path or the colour
        QString region;
        QString offset;
        QString action;
    };
    struct Region
    {
        qint32 x = 0;
        qint32 y = 0;
        qint32 width = 0;
        qint32 height = 0;
    };

    SearchFields searchFields(const CommandCall &call) const;
    Region regionOf(const QString &text) const;
    template <typename Search>
    void searchAndAct(
        const CommandCall &call, const SearchFields &fields, const QString &notFound, const Search &search);
    void act(const CommandCall &call, const QString &action, ScriptPoint point);
    void tellFailure(const CommandCall &call, const QString &what);
    void putOnClipboard(const QString &text);

    Needs m_use;
    ScreenSearch m_search;
};

} // namespace plum
