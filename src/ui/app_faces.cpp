#include "ui/app_faces.h"

#include "library/app_library.h"
#include "platform/paths.h"

#include <QFileInfo>
#include <QImageReader>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int maxIconSide = 4096; // pixels; a larger picture is not an icon
constexpr qsizetype maxFaces = 1000;

} // namespace

const AppFaces::Face &AppFaces::face(const QString &keyword, int side, qreal scale)
{
    const auto known = m_faces.constFind(keyword);
    if (known != m_faces.constEnd() && (known->icon.isNull() || known->icon.devicePixelRatio() == scale))
        return *known;

    if (m_faces.size() >= maxFaces)
        m_faces.clear();
    Face face{.icon = icon(keyword, side, scale), .summary = {}};
    const AppGuide guide = AppLibrary::isFolderName(keyword) ? m_library.guide(keyword) : AppGuide{};
    if (guide.kind == AppGuide::Kind::Text)
        face.summary = guide.content.simplified();
    return *m_faces.insert(keyword, face);
}

QPixmap AppFaces::icon(const QString &keyword, int side, qreal scale) const
{
    if (!AppLibrary::isFolderName(keyword))
        return {};
    const QString path = m_paths.toSystem(m_library.appPath(keyword, u"icon.png"_s));
    // Most apps have none; a reader would go through all plug-ins before it says so.
    if (!QFileInfo::exists(path))
        return {};
    QImageReader reader(path);
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > maxIconSide || size.height() > maxIconSide)
        return {};
    reader.setScaledSize(size.scaled(QSize(side, side) * scale, Qt::KeepAspectRatio));
    QPixmap pixmap = QPixmap::fromImageReader(&reader);
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

} // namespace plum
