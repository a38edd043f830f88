#include "search/screen_search.h"

#include "engine/launcher.h"
#include "platform/paths.h"
#include "search/find_color_scan.h"
#include "search/pixel_kernels.h"

#include <QFileInfo>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QString toText(const std::optional<Position> &found)
{
    return found ? u"%1,%2"_s.arg(found->x).arg(found->y) : QString();
}

} // namespace

ScreenSearch::ScreenSearch(const Needs &needs)
    : m_use(needs)
    , m_scan(pixelKernels())
{
}

QString ScreenSearch::FindColor(qint32 x, qint32 y, qint32 width, qint32 height, const QString &colour)
{
    const quint32 wanted = Channels::fromText(colour).pixel();
    const std::optional<ScreenRegion> region = captureRegion(m_use.screen, x, y, width, height);
    return region ? toText(findColour(*region, wanted, pixelKernels())) : QString();
}

QString ScreenSearch::FindPic(
    qint32 x, qint32 y, qint32 width, qint32 height, const QString &path, const QString &tolerance)
{
    if (!requirePicture(path))
        return {};
    const Channels distances = Channels::fromText(tolerance);
    const std::shared_ptr<const PictureTemplate> picture
        = m_pictures.prepared(m_use.paths.toSystem(path), distances);
    if (!picture)
        return {};
    const std::optional<ScreenRegion> region
        = captureRegion(m_use.screen, x, y, width, height, LayeredWindows::Ignored);
    return region ? toText(m_scan.find(*region, *picture)) : QString();
}

bool ScreenSearch::hasPicture(const QString &path) const
{
    // A folder, or a device that could be read for ever, is no file here.
    return QFileInfo(m_use.paths.toSystem(path)).isFile();
}

bool ScreenSearch::requirePicture(const QString &path)
{
    if (hasPicture(path))
        return true;
    m_use.launcher.showMessage({.text = u"image"_s + path + u"can not finf"_s,
        .title = u"ERR : Wrong !"_s,
        .icon = MessageIcon::Critical});
    return false;
}

} // namespace plum
