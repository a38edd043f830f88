#include "library/zip_unpacker.h"

#include "archive/unzip.h"

namespace plum {

bool ZipUnpacker::extract(const QString &packagePath, const QString &folder)
{
    Unzip archive(m_paths, m_codec);
    return archive.Init(packagePath) && archive.unzip(folder);
}

} // namespace plum
