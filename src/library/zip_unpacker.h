#pragma once

#include "library/app_library.h"

namespace plum {

// Unpacks packages, which are ZIP archives.
class ZipUnpacker final : public PackageUnpacker
{
public:
    ZipUnpacker(const Paths &paths, TextCodec &codec)
        : m_paths(paths)
        , m_codec(codec)
    {
    }

    bool extract(const QString &packagePath, const QString &folder) override;

private:
    const Paths &m_paths;
    TextCodec &m_codec;
};

} // namespace plum
