#pragma once

#include "engine/argument_reader.h"
#include "engine/run_loop.h"
#include "engine/run_start.h"
#include "engine/run_state.h"
#include "engine/script_vocabulary.h"
#include "engine/text_files.h"

#include <memory>
#include <utility>
#include <vector>

namespace plum {

class ScriptFolders;
class TextCodec;

// The objects of a process that runs scripts, in the order in which they need each other, with the
// namespaces that touch no desktop. Whoever builds the program adds the others.
class ScriptEngine
{
public:
    struct Needs
    {
        Clipboard &clipboard;
        Pointer &pointer;
        Shell &shell; // what scripts start programs with
        Paths &paths;
        const ScriptFolders &folders;
        TextCodec &codec;
        Launcher &launcher;
        Waiter &waiter;
    };

    explicit ScriptEngine(const Needs &needs);
    ~ScriptEngine();
    Q_DISABLE_COPY_MOVE(ScriptEngine)

    // A further namespace; one that is there already is replaced.
    void add(const QString &name, std::unique_ptr<Handler> handler);

    RunState &state() { return m_state; }
    TextFiles &files() { return m_files; }
    const ArgumentReader &reader() const { return m_reader; }
    RunLoop &loop() { return m_loop; }
    RunStart &starts() { return m_starts; }

    // The commands of a namespace that is there.
    Handler &handler(const QString &name) const;

    // Every namespace with its table, for the editor.
    ScriptVocabulary vocabulary() const;

private:
    RunState m_state;
    TextFiles m_files;
    ArgumentReader m_reader;
    RunLoop m_loop;
    RunStart m_starts;
    std::vector<std::pair<QString, std::unique_ptr<Handler>>> m_namespaces;
};

} // namespace plum
