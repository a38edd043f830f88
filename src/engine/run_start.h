#pragma once

#include <QString>

namespace plum {

class Paths;
class RunLoop;
class ScriptFolders;
class TextFiles;
struct RunState;

// The ways in which a run begins: each prepares the run state and hands over to the run loop.
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

    // What a command line named.
    struct CommandLineScript
    {
        QString path; // empty when the command line does not end in ".wf"
        bool loaded = false; // the file could be read
    };

    // Prepares the run of the script that `commandLine` names: mode "jb", no keyword, the run list filled.
    CommandLineScript prepareCommandLine(const QString &commandLine);

    enum class ScriptPath {
        Kept, // the running script's path stays that of an earlier start
        Remembered,
    };

    // Loads an app's script, relative to the working folder, and runs it. Starting from the app list
    // remembers the script's path; starting from the keyword box or the filtered list does not (kept:
    // `os.path_pfold` depends on it).
    void runApp(const QString &keyword, ScriptPath scriptPath);

    // Runs the whole run list. More lines than a 16-bit index reaches raise an overflow (6).
    void runAll();

    // Goes on with a suspended run, up to the last line of the run list.
    void resume();

private:
    bool LoadScript(const QString &path);
    qint16 lastIndex() const;

    RunState &m_state;
    RunLoop &m_loop;
    const TextFiles &m_files;
    const Paths &m_paths;
    const ScriptFolders &m_folders;
};

} // namespace plum
