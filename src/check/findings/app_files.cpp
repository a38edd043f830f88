#include "check/findings/app_files.h"

#include "check/findings/check_words.h"
#include "search/picture_template.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr Channels searchTolerance{0x58, 0xDD, 0xFF};

// Nothing for a file that is not there in exactly these letters.
std::optional<LineTranscript::AskedFile> stateOf(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return {};
    return LineTranscript::AskedFile{path, file.size(), file.lastModified().toMSecsSinceEpoch()};
}

// `path` with the components that exist in another letter case, as paths of apps from Windows are looked up.
bool existsInAnyCase(const QString &path)
{
    if (QFileInfo::exists(path))
        return true;
    const QFileInfo file(path);
    const QDir folder(file.path());
    const QStringList entries = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    return entries.contains(file.fileName(), Qt::CaseInsensitive);
}

// What the search compares of a picture, in words.
QString comparedPart(const Picture &picture, const PictureTemplate &compared)
{
    return CheckWords::tr("the search compares %1 x %2 of its %3 x %4 pixels, from %5,%6")
        .arg(compared.comparedWidth())
        .arg(compared.comparedHeight())
        .arg(picture.width)
        .arg(picture.height)
        .arg(compared.left())
        .arg(compared.top());
}

void judgePicture(
    Report &report, int line, int column, const QString &path, const QString &written, const QString &region)
{
    const std::optional<Picture> picture = readPicture(path);
    if (!picture) {
        report.add(line, column, u"picture-never-found",
            CheckWords::tr("%1 is no picture that can be read (BMP, ICO, JPEG, GIF, PNG).").arg(written));
        return;
    }
    const PictureTemplate compared(*picture, searchTolerance);
    if (compared.comparedWidth() <= 0 || compared.comparedHeight() <= 0) {
        report.add(line, column, u"picture-never-found",
            CheckWords::tr("Of %1 nothing is left to compare (it has one colour, or is too small): it is "
                           "found at the first place.")
                .arg(written));
        return;
    }
    const QStringList numbers = region.split(u':');
    if (numbers.size() != 4)
        return;
    bool isWidth = false;
    bool isHeight = false;
    const int width = numbers[2].toInt(&isWidth);
    const int height = numbers[3].toInt(&isHeight);
    if (isWidth && isHeight && (compared.right() + 2 > width || compared.bottom() + 2 > height))
        report.add(line, column, u"picture-never-found",
            CheckWords::tr("%1 does not fit into a region of %2 x %3 pixels; %4.")
                .arg(written, QString::number(width), QString::number(height),
                    comparedPart(*picture, compared)));
}

} // namespace

QString AppFiles::resolved(const QString &written) const
{
    QString path = written;
    path.replace(u'\\', u'/');
    constexpr QLatin1StringView ownFolder("_pfold_/");
    constexpr QLatin1StringView parentFolder("_ppfold_/");
    if (m_folder.isEmpty())
        return {};
    if (path.startsWith(ownFolder))
        return m_folder + u'/' + path.sliced(ownFolder.size());
    if (path.startsWith(parentFolder))
        return m_folder + u"/../"_s + path.sliced(parentFolder.size());
    return {};
}

bool AppFiles::isStill(const LineTranscript::AskedFile &asked)
{
    const auto now = stateOf(asked.path);
    return now && now->size == asked.size && now->changed == asked.changed;
}

void AppFiles::judge(Report &report, int line, int column, const QString &written, const Use &use) const
{
    const QString path = resolved(written);
    // What lies outside of the app's folder may be there when the script runs.
    if (path.isEmpty() || !QDir::cleanPath(path).startsWith(QDir::cleanPath(m_folder) + u'/'))
        return;
    report.askedFile(stateOf(path));
    if (!existsInAnyCase(path)) {
        report.add(line, column, u"missing-file", CheckWords::tr("The app's folder has no %1.").arg(written));
        return;
    }
    if (use.isPicture)
        judgePicture(report, line, column, path, written, use.region);
}

} // namespace plum
