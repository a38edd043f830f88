#pragma once

#include "engine/command_table.h"

namespace plum {

class FileUpload;
class HttpClient;
class ScriptFolders;
class Shell;
class TextCodec;

// The namespace `net`. No failure stops the script or shows a message; a field that is not there is empty.
class NetCommands final : public TableHandler<NetCommands>
{
public:
    struct Needs
    {
        HttpClient &http;
        FileUpload &upload;
        TextCodec &codec;
        Shell &shell;
        const ScriptFolders &folders;
    };

    explicit NetCommands(const Needs &needs)
        : TableHandler(WordMatch::LowerCased)
        , m_use(needs)
    {
    }

    static std::span<const Row> table();

private:
    void get(const CommandCall &call);
    void post(const CommandCall &call);
    void upload(const CommandCall &call);
    void download(const CommandCall &call);
    void request(const CommandCall &call);

    Needs m_use;
};

} // namespace plum
