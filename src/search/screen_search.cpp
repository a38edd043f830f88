#include "search/screen_search.h"

#include "engine/launcher.h"
#include "platform/paths.h"
#include "platform/stop_signal.h"
#include "search/find_color_scan.h"
#include "search/pixel_kernels.h"
#include "search/search_answers.h"
#include "search/search_observer.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace plum {

using namespace Qt::StringLiterals;

ScreenSearch::ScreenSearch(const Needs &needs)
    : m_use(needs)
    , m_scan(pixelKernels(), needs.stop)
{
}

std::optional<Position> ScreenSearch::FindColor(const ScreenArea &area, Channels colour)
{
    const std::optional<ScreenRegion> region
        = captureRegion(m_use.screen, area.x, area.y, area.width, area.height);
    const QRect rectangle(area.x, area.y, area.width, area.height);
    const std::optional<Position> found = m_use.answers ? m_use.answers->colourAt(rectangle, colour)
        : region                                        ? findColour(*region, colour.pixel(), pixelKernels())
                                                        : std::nullopt;
    if (m_use.observer)
        m_use.observer->colourSearched(rectangle, region.value_or(ScreenRegion()), colour, found);
    return found;
}

std::optional<Position> ScreenSearch::FindPic(const ScreenArea &area, const QString &path, Channels tolerance)
{
    if (!requirePicture(path))
        return {};
    const std::shared_ptr<const PictureTemplate> picture
        = m_pictures.prepared(m_use.paths.toSystem(path), tolerance);
    if (!picture)
        return {};
    const std::optional<ScreenRegion> region
        = captureRegion(m_use.screen, area.x, area.y, area.width, area.height, LayeredWindows::Ignored);
    const QRect rectangle(area.x, area.y, area.width, area.height);
    const std::optional<Position> found = m_use.answers ? m_use.answers->pictureAt(rectangle, path)
        : region                                        ? m_scan.find(*region, *picture)
                                                        : std::nullopt;
    if (m_use.stop)
        m_use.stop->check();
    if (m_use.observer && region)
        m_use.observer->pictureSearched(rectangle, path, *region, *picture, found);
    return found;
}

bool ScreenSearch::hasPicture(const QString &path) const
{
    // A folder, or a device that could be read for ever, is no file here.
    const QString file = m_use.paths.toSystem(path);
    return m_use.paths.mayRead(file) && QFileInfo(file).isFile();
}

bool ScreenSearch::requirePicture(const QString &path)
{
    if (hasPicture(path))
        return true;
    m_use.launcher.showMessage({.text = u"image"_s + path + u"can not finf"_s,
        .title = u"ERR : Wrong !"_s,
        .icon = MessageIcon::Critical,
        .meaning = QCoreApplication::translate("plum::ScreenSearch", "There is no picture %1.").arg(path)});
    return false;
}

} // namespace plum
