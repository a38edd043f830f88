#pragma once

#include "platform/shell.h"

namespace plum {

class Paths;
class TextCodec;

// Starting and opening through shell32.
class Win32Shell final : public Shell
{
public:
    Win32Shell(const Paths &paths, TextCodec &codec)
        : m_paths(paths)
        , m_codec(codec)
    {
    }

    bool open(const QString &target, const QString &parameters, ShowState state) override;
    bool startHelper(const QString &program, const QString &commandLine, ShowState state) override;
    QString desktopFolder() override;
    QString shortcutTarget(const QString &path) override;

private:
    const Paths &m_paths;
    TextCodec &m_codec;
};

} // namespace plum
