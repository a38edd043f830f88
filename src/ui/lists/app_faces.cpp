#include "ui/lists/app_faces.h"

#include "library/app_library.h"
#include "platform/paths.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int maxIconSide = 1024; // pixels; a larger picture is not an icon
constexpr qint64 maxIconSize = 1 << 20; // bytes
constexpr qint64 mostGuide = 4096; // bytes
constexpr qsizetype maxFaces = 1000;
constexpr qint64 readingTime = 5; // milliseconds, then the interface has its turn

} // namespace

AppFaces::AppFaces(const AppLibrary &library, const Paths &paths)
    : m_library(library)
    , m_paths(paths)
{
    m_reading.setSingleShot(true);
    m_reading.setInterval(0);
    connect(&m_reading, &QTimer::timeout, this, &AppFaces::readWanted);
}

AppFaces::Face AppFaces::face(const QString &keyword, int side, qreal scale)
{
    if (m_faces.size() >= maxFaces && !m_faces.contains(keyword))
        m_faces.clear();
    Known &known = m_faces[keyword];
    if (known.scale != scale && known.wanted != scale) {
        known.side = side;
        known.wanted = scale;
        m_wanted += keyword;
        m_reading.start();
    }
    return known.face;
}

void AppFaces::forget()
{
    for (Known &known : m_faces)
        known.scale = known.wanted = 0;
}

void AppFaces::readWanted()
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (!m_wanted.isEmpty() && elapsed.elapsed() < readingTime) {
        const QString keyword = m_wanted.takeFirst();
        const auto known = m_faces.find(keyword);
        if (known == m_faces.end() || known->wanted == 0 || !AppLibrary::isFolderName(keyword))
            continue;
        known->scale = known->wanted;
        known->face.icon = icon(keyword, known->side, known->scale);
        const AppGuide guide = m_library.guide(keyword, mostGuide);
        known->face.summary = guide.kind == AppGuide::Kind::Text ? guide.content.simplified() : QString();
    }
    if (!m_wanted.isEmpty())
        m_reading.start();
    Q_EMIT changed();
}

QPixmap AppFaces::icon(const QString &keyword, int side, qreal scale) const
{
    QFile file(m_paths.toSystem(m_library.appPath(keyword, u"icon.png"_s)));
    const QFileInfo info(file);
    if (!info.isFile() || info.size() > maxIconSize || !file.open(QIODevice::ReadOnly))
        return {};
    QByteArray bytes = file.read(maxIconSize);
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > maxIconSide || size.height() > maxIconSide)
        return {};
    reader.setScaledSize(size.scaled(QSize(side, side) * scale, Qt::KeepAspectRatio));
    QPixmap pixmap = QPixmap::fromImageReader(&reader);
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

} // namespace plum
