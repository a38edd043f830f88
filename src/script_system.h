#pragma once

#include "commands/file_commands.h"
#include "commands/keyboard_commands.h"
#include "commands/mouse_clicks.h"
#include "commands/mouse_commands.h"
#include "commands/net_commands.h"
#include "commands/notices.h"
#include "commands/os_commands.h"
#include "commands/waitable_timer.h"
#include "commands/webbox_commands.h"
#include "commands/window_commands.h"
#include "engine/argument_reader.h"
#include "engine/input_commands.h"
#include "engine/print_commands.h"
#include "engine/run_loop.h"
#include "engine/run_start.h"
#include "engine/run_state.h"
#include "engine/script_vocabulary.h"
#include "engine/set_command.h"
#include "engine/text_commands.h"
#include "engine/text_files.h"
#include "engine/time_commands.h"
#include "http/file_upload.h"
#include "http/loaded_http_client.h"

#include <utility>
#include <vector>

namespace plum {

class Platform;
class Shell;
class StorePage;

// The script engine with every namespace, on one platform: the objects of a process that runs scripts,
// in the order in which they need each other.
class ScriptSystem
{
public:
    // `shell` is what scripts start programs with.
    ScriptSystem(Platform &platform, Shell &shell, Launcher &launcher, StorePage &storePage,
        const QString &executableName);
    Q_DISABLE_COPY_MOVE(ScriptSystem)

    RunState &state() { return m_state; }
    RunStart &starts() { return m_starts; }

    // Every namespace with its table, for the editor.
    ScriptVocabulary vocabulary() const;

private:
    RunState m_state;
    TextFiles m_files;
    ArgumentReader m_reader;
    clsWaitableTimer m_waiter;
    RunLoop m_loop;
    RunStart m_starts;

    LoadedHttpClient m_http;
    FileUpload m_upload;
    StandardErrorNotices m_notices;
    MouseClicks m_clicks;
    MouseCommands m_mouse;
    KeyboardCommands m_keyboard;
    FileCommands m_file;
    NetCommands m_net;
    TextCommands m_text;
    SetCommand m_set;
    WebboxCommands m_webbox;
    TimeCommands m_time;
    WindowCommands m_window;
    PrintCommands m_print;
    OsCommands m_os;
    InputCommands m_input;

    std::vector<std::pair<QString, Handler *>> m_namespaces;
};

} // namespace plum
