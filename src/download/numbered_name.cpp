#include "download/numbered_name.h"

namespace plum {

QString NumberedName(const QString &path, int n)
{
    const qsizetype separator = path.lastIndexOf(u'\\');
    if (separator < 0)
        return {};
    const qsizetype dot = path.lastIndexOf(u'.');
    const QString extension = dot < 0 ? QString() : path.sliced(dot);
    const qsizetype baseEnd = dot > separator ? dot : path.size();
    return path.first(baseEnd) + u'(' + QString::number(n) + u')' + extension;
}

} // namespace plum
