#include "commands/notices.h"

#include <cstdio>

namespace plum {

void StandardErrorNotices::tell(const QString &line)
{
    std::fprintf(stderr, "plum: %s\n", qUtf8Printable(line));
    std::fflush(stderr);
}

} // namespace plum
