#include "flight/film_strip.h"

#include "flight/film.h"
#include "flight/flight_log.h"
#include "flight/flight_words.h"

#include <QBuffer>
#include <QImage>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Decided for how soon it is written; the pages are not kept for long.
constexpr int quality = 80;

QString imageOf(const ScreenTile *tile, const QString &what)
{
    if (!tile)
        return {};
    const QImage image = tile->toImage();
    QBuffer png;
    png.open(QIODevice::WriteOnly);
    image.save(&png, "PNG", quality);
    return u"<img alt=\"%1\" width=\"%2\" height=\"%3\" src=\"data:image/png;base64,%4\">"_s.arg(what)
        .arg(image.width())
        .arg(image.height())
        .arg(QLatin1StringView(png.data().toBase64()));
}

QString frameOf(const FlightEntry &entry, const Film &film)
{
    const QString before = imageOf(film.find(entry.before), FlightWords::tr("before"));
    const QString after
        = entry.after == entry.before ? QString() : imageOf(film.find(entry.after), FlightWords::tr("after"));
    if (before.isEmpty() && after.isEmpty())
        return {};
    return u"<li><figure>"_s + before + after + u"<figcaption>%1: <code>"_s.arg(entry.line.number)
        + entry.line.text.toHtmlEscaped() + u"</code></figcaption></figure></li>\n"_s;
}

} // namespace

QString filmStrip(const FlightLog &log, const Film &film)
{
    QString frames;
    for (const FlightEntry &entry : log.entries())
        frames += frameOf(entry, film);
    if (frames.isEmpty())
        return {};
    return u"<h2>"_s + FlightWords::tr("Pictures").toHtmlEscaped() + u"</h2>\n<p class=\"quiet\">"_s
        + FlightWords::tr(
            "Before and after each line: what was around the pointer, or what a search saw. One picture: "
            "nothing had changed.")
              .toHtmlEscaped()
        + u"</p>\n<ol class=\"film\">\n"_s + frames + u"</ol>\n"_s;
}

} // namespace plum
