#pragma once

#include "engine/command_table.h"

namespace plum {

class HttpClient;
class JavaScript;
class Paths;
class ScriptFolders;
class Shell;
class StorePage;
class TextCodec;
class TextFiles;
struct RunState;

// The namespace `file`. Errors are suppressed statement by statement: a step that fails is skipped, what it
// would have read is empty, and the command goes on.
class FileCommands final : public TableHandler<FileCommands>
{
public:
    struct Needs
    {
        RunState &state;
        Paths &paths;
        const ScriptFolders &folders;
        TextCodec &codec;
        TextFiles &files;
        Shell &shell;
        HttpClient &http;
        JavaScript &javaScript;
        StorePage &storePage;
    };

    explicit FileCommands(const Needs &needs)
        : TableHandler(WordMatch::LowerCased)
        , m_use(needs)
    {
    }

    static std::span<const Row> table();

private:
    void open(const CommandCall &call);
    void callProgram(const CommandCall &call);
    void callJavaScript(const CommandCall &call);
    void read(const CommandCall &call);
    void save(const CommandCall &call);
    void write(const CommandCall &call);
    void exists(const CommandCall &call);
    void list(const CommandCall &call);
    void move(const CommandCall &call);

    void requireFile(const CommandCall &call, const QString &written) const;
    QString resolved(const QString &path) const;
    void prepareBrowser(const QString &size);

    Needs m_use;
};

} // namespace plum
