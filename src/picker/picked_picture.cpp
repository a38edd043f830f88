#include "picker/picked_picture.h"

#include "commands/screen_fields.h"

#include <QCoreApplication>
#include <QDir>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("plum::Picker", text);
}

// The image has 32 bits a pixel, as those of a view.
Picture pictureOf(const QImage &image)
{
    Picture picture{image.width(), image.height(), {}};
    picture.pixels.reserve(
        static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
    for (int row = 0; row < image.height(); ++row) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(row));
        for (int column = 0; column < image.width(); ++column)
            picture.pixels.push_back(line[column] & 0xffffff);
    }
    return picture;
}

QString freeName(const QDir &folder)
{
    for (int number = 1;; ++number) {
        QString name = u"picture%1.png"_s.arg(number);
        if (!folder.exists(name))
            return name;
    }
}

PictureTrial tryOn(const QImage &screen, const QImage &image)
{
    const Picture picture = pictureOf(image);
    const Picture pixels = pictureOf(screen);
    const ScreenRegion region{screen.width(), screen.height(), {}, {screen.size(), pixels.pixels}};
    return tryPicture(picture, pictureTolerance, region);
}

} // namespace

PickedPicture savePicture(const DesktopView &view, const QRect &part, const QString &folder)
{
    const QImage image = view.picture().copy(part.translated(-view.desktop().topLeft()));
    QString name = freeName(QDir(folder));
    if (!image.save(QDir(folder).filePath(name), "PNG"))
        return {{},
            {translated(QT_TRANSLATE_NOOP("plum::Picker", "The picture cannot be written into %1."))
                    .arg(QDir::toNativeSeparators(folder))}};
    return {name, sentencesOf(tryOn(view.searched(), image))};
}

QStringList sentencesOf(const PictureTrial &trial)
{
    if (trial.compared.isEmpty() || trial.comparedPixels == 0)
        return {translated(QT_TRANSLATE_NOOP("plum::Picker",
            "Nothing of it is left to compare: it has one colour or is too small, and is found at the first "
            "place."))};
    QStringList sentences;
    sentences += translated(QT_TRANSLATE_NOOP("plum::Picker",
                                "The search compares %1 pixels of the %2 x %3 from %4:%5; red may be off by "
                                "%6, green by %7, blue does not count."))
                     .arg(trial.comparedPixels)
                     .arg(trial.size.width())
                     .arg(trial.size.height())
                     .arg(trial.compared.x())
                     .arg(trial.compared.y())
                     .arg(pictureTolerance.red)
                     .arg(pictureTolerance.green);
    if (trial.found == 0)
        sentences += translated(QT_TRANSLATE_NOOP("plum::Picker", "It is not found on the main screen."));
    else if (trial.found == 1)
        sentences += translated(QT_TRANSLATE_NOOP("plum::Picker", "It is found once on this screen."));
    else if (trial.found < PictureTrial::mostFound)
        sentences += translated(
            QT_TRANSLATE_NOOP("plum::Picker", "It is found %1 times on this screen; the first one counts."))
                         .arg(trial.found);
    else
        sentences += translated(QT_TRANSLATE_NOOP(
            "plum::Picker", "It is found a hundred times and more on this screen; the first one counts."));
    if (trial.nearest)
        sentences += translated(QT_TRANSLATE_NOOP("plum::Picker",
                                    "The most similar other place differs in %1 of %2 pixels, at %3:%4."))
                         .arg(trial.nearest->differing)
                         .arg(trial.nearest->compared)
                         .arg(trial.nearest->at.x)
                         .arg(trial.nearest->at.y);
    else if (trial.found > 0 && trial.found < PictureTrial::mostFound)
        sentences += translated(QT_TRANSLATE_NOOP("plum::Picker", "No other place is like it."));
    return sentences;
}

} // namespace plum
