#pragma once

#include "engine/editions/later_edition.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace plum {

class Paths;
class RunLoop;
class ScriptFolders;
class TextFiles;
struct RunLimit;
struct RunState;

// The ways in which a run begins: each prepares the run state and hands over to the run loop, or to the
// runner of the edition that the script asks for.
class RunStart
{
public:
    RunStart(RunState &state, RunLoop &loop, const TextFiles &files, const Paths &paths,
        const ScriptFolders &folders)
        : m_state(state)
        , m_loop(loop)
        , m_files(files)
        , m_paths(paths)
        , m_folders(folders)
    {
    }

    // Who runs the scripts that ask for edition 2. Without it they cannot be run.
    void setLaterEdition(LaterEdition &runner) { m_later = &runner; }

    // What an app of the library may do, by the script that has been read of it; null for no limit. Scripts
    // on the command line have none.
    using LimitOf
        = std::function<std::shared_ptr<const RunLimit>(const QString &keyword, const QByteArray &script)>;
    void setLimits(LimitOf limitOf) { m_limitOf = std::move(limitOf); }

    // What a command line named.
    struct CommandLineScript
    {
        QString path; // empty when the command line does not end in ".wf"
        bool loaded = false; // the file could be read
    };

    // Prepares the run of the script that `commandLine` names: mode "jb", no keyword, the run list filled.
    CommandLineScript prepareCommandLine(const QString &commandLine);

    // As above for the script at `path`, whatever its name. False when it cannot be read.
    bool prepareFile(const QString &path);

    enum class ScriptPath {
        Kept, // the running script's path stays that of an earlier start
        Remembered,
    };

    // Loads an app's script, relative to the working folder, and runs it. Starting from the app list
    // remembers the script's path; starting from the keyword box or the filtered list does not (kept:
    // `os.path_pfold` depends on it).
    void runApp(const QString &keyword, ScriptPath scriptPath);

    // Runs what was loaded. Of edition 1 that is the whole run list: more lines than a 16-bit index reaches
    // raise an overflow (6).
    void runAll();

    // Goes on with a suspended run, up to the last line of the run list.
    void resume();

    // Nothing is left of the run that waits for the user, nor of the variables.
    void abandon();

    // The run of a later edition that is showing something right now; 0 when it is one of edition 1.
    RunTicket asking() const;

    // What became of what that run showed.
    void answer(RunTicket ticket, const Answer &answer);

private:
    class Outside;

    bool LoadScript(const QString &path, const QString &keyword = {});
    void runLater();
    void runLines(qint16 &end);
    qint16 lastIndex() const;
    QString nameOfRun() const;

    RunState &m_state;
    RunLoop &m_loop;
    const TextFiles &m_files;
    const Paths &m_paths;
    const ScriptFolders &m_folders;

    LimitOf m_limitOf;
    LaterEdition *m_later = nullptr;
    std::optional<ScriptStart> m_loaded; // a script of a later edition, to be run next
    int m_loopsRunning = 0;
    bool m_innermostIsLater = false;
};

} // namespace plum
