#include "flight/flight_page.h"

#include "flight/film_strip.h"
#include "flight/flight_data.h"
#include "flight/flight_log.h"
#include "flight/flight_words.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr double lineWidth = 1000; // of the time line
constexpr std::size_t mostBars = 2000;

constexpr char16_t head[] = uR"(<!DOCTYPE html>
<html lang="%3">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; img-src data:; style-src 'unsafe-inline'">
<meta name="viewport" content="width=device-width">
<title>%1</title>
<style>
:root { color-scheme: light dark; }
body { font: 15px/1.45 system-ui, sans-serif; margin: 2rem; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; vertical-align: top; padding: .25rem .6rem; border-bottom: 1px solid #8884; }
td { overflow-wrap: anywhere; }
.n { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; }
code { white-space: pre-wrap; }
.failed, .stopped { background: #d6303030; }
.bar { fill: #7a4fbf; } .bar.failed, .bar.stopped { fill: #d63030; background: none; }
svg { width: 100%; height: 2.5rem; background: #8882; }
.quiet { opacity: .7; }
.film { display: flex; gap: .8rem; overflow-x: auto; list-style: none; padding: 0; }
figure { margin: 0; white-space: nowrap; } figcaption { max-width: 22rem; overflow: hidden; text-overflow: ellipsis; }
</style>
</head>
<body>
<h1>%1</h1>
<p>%2</p>
)";

constexpr char16_t tableHead[] = uR"(<table>
<thead><tr><th scope="col" class="n">s</th><th scope="col" class="n">ms</th><th scope="col">%1</th><th scope="col">%2</th>
<th scope="col">%3</th><th scope="col">%4</th><th scope="col">%5</th></tr></thead>
<tbody>
)";

QString seconds(qint64 microseconds)
{
    return QString::number(double(microseconds) / 1e6, 'f', 3);
}

QString milliseconds(qint64 microseconds)
{
    return QString::number(double(microseconds) / 1e3, 'f', 1);
}

// What is said of each end of a line, and the class that its row has.
struct EndWords
{
    const char *text;
    QStringView rowClass;
};

constexpr std::array<EndWords, 4> endWords{EndWords{"", u""},
    EndWords{QT_TRANSLATE_NOOP("plum::FlightWords", "waits"), u""},
    EndWords{QT_TRANSLATE_NOOP("plum::FlightWords", "failed"), u"failed"},
    EndWords{QT_TRANSLATE_NOOP("plum::FlightWords", "stopped"), u"stopped"}};

QString wordFor(const FlightEntry &entry)
{
    if (!entry.end)
        return FlightWords::tr("goes on");
    const char *text = endWords[static_cast<std::size_t>(*entry.end)].text;
    return *text == 0 ? QString() : FlightWords::tr(text);
}

QString classOf(const FlightEntry &entry)
{
    return entry.end ? endWords[static_cast<std::size_t>(*entry.end)].rowClass.toString() : QString();
}

QString code(const QString &text)
{
    return u"<code>"_s + text.toHtmlEscaped() + u"</code>"_s;
}

QString deedsOf(const FlightEntry &entry)
{
    QStringList deeds;
    if (entry.moreDeeds > 0)
        deeds += u"<span class=\"quiet\">%1</span>"_s.arg(
            FlightWords::tr("%1 before these").arg(entry.moreDeeds));
    for (const FlightEntry::Deed &deed : entry.deeds)
        deeds += u"<span class=\"quiet\">%1</span> %2"_s.arg(
            seconds(deed.at), deed.what.toText().toHtmlEscaped());
    if (const QString word = wordFor(entry); !word.isEmpty())
        deeds += u"<strong>%1</strong>"_s.arg(word)
            + (entry.reason.isEmpty() ? QString() : u": "_s + entry.reason.toHtmlEscaped());
    return deeds.join(u"<br>");
}

QString rowOf(const FlightEntry &entry)
{
    QString row;
    if (entry.passedBefore > 0)
        row += u"<tr class=\"quiet\"><td colspan=\"7\">%1</td></tr>\n"_s.arg(
            FlightWords::tr("%1 lines that only compute were not written down").arg(entry.passedBefore));
    QStringList fields;
    for (const QString &field : entry.fields)
        fields += code(field);
    QStringList variables;
    for (const auto &[name, value] : entry.variables)
        variables += name.toHtmlEscaped() + u" = "_s + code(value);
    const QString place = entry.line.file.isEmpty()
        ? QString::number(entry.line.number)
        : u"%1:%2"_s.arg(entry.line.file.toHtmlEscaped()).arg(entry.line.number);
    // Not by arg(), which would look for its marks in what has been put in.
    for (const QString &piece :
        {u"<tr class=\""_s, classOf(entry), u"\"><td class=\"n\">"_s, seconds(entry.begun),
            u"</td><td class=\"n\">"_s, entry.end ? milliseconds(entry.lasted) : QString(), u"</td><td>"_s,
            place, u"</td><td>"_s, QString(qsizetype(entry.depth) * 2, QChar(0xa0)), code(entry.line.text),
            u"</td><td>"_s, fields.join(u"<br>"), u"</td><td>"_s, deedsOf(entry), u"</td><td>"_s,
            variables.join(u"<br>"), u"</td></tr>\n"_s})
        row += piece;
    return row;
}

qint64 endOf(const FlightEntry &entry)
{
    const qint64 lastDeed = entry.deeds.isEmpty() ? entry.begun : entry.deeds.last().at;
    return std::max({entry.begun + entry.lasted, lastDeed, entry.begun + 1});
}

// The lines as bars from left to right; where they are too many, the last ones.
QString timeLine(const std::deque<FlightEntry> &entries)
{
    const std::size_t first = entries.size() > mostBars ? entries.size() - mostBars : 0;
    const qint64 from = entries[first].begun;
    qint64 to = from + 1;
    for (const FlightEntry &entry : entries)
        to = std::max(to, endOf(entry));
    const double scale = lineWidth / double(to - from);
    QString svg
        = u"<svg viewBox=\"0 0 1000 40\" preserveAspectRatio=\"none\" role=\"img\" aria-label=\"%1\">\n"_s
              .arg(FlightWords::tr("Time line, %1 s").arg(seconds(to - from)));
    for (std::size_t index = first; index < entries.size(); ++index) {
        const FlightEntry &entry = entries[index];
        const double x = double(entry.begun - from) * scale;
        // A gap shows where the next one begins.
        const double width = std::max(1.0, double(endOf(entry) - entry.begun) * scale - 1);
        svg += u"<rect class=\"bar %1\" x=\"%2\" width=\"%3\" y=\"%4\" height=\"10\"><title>%5</title></rect>\n"_s
                   .arg(classOf(entry))
                   .arg(x, 0, 'f', 2)
                   .arg(width, 0, 'f', 2)
                   .arg(std::min(entry.depth, 3) * 10)
                   .arg(FlightWords::tr("line %1").arg(entry.line.number));
    }
    return svg + u"</svg>\n"_s;
}

} // namespace

QString flightPage(const FlightLog &log, const Film &film)
{
    const QString said
        = log.outcome().isEmpty() ? FlightWords::tr("The run is done, or goes on.") : log.outcome();
    const QString title = FlightWords::tr("What happened: %1").arg(log.script());
    //: The language of the page, as HTML names it.
    const QString language = FlightWords::tr("en");
    QString page = QString::fromUtf16(head).arg(title.toHtmlEscaped(), said.toHtmlEscaped(), language);
    const auto paragraph = [](const QString &text) { return u"<p>"_s + text + u"</p>\n"_s; };
    if (log.entries().empty()) {
        return page + paragraph(FlightWords::tr("No line has been carried out.")) + flightData(log)
            + u"</body>\n</html>\n"_s;
    }
    page += timeLine(log.entries()) + filmStrip(log, film);
    if (log.forgotten() > 0)
        page += paragraph(FlightWords::tr("%1 earlier lines were given up for these.").arg(log.forgotten()));
    page += QString::fromUtf16(tableHead).arg(FlightWords::tr("Line"), FlightWords::tr("Script"),
        FlightWords::tr("Came to"), FlightWords::tr("Did"), FlightWords::tr("Set"));
    for (const FlightEntry &entry : log.entries())
        page += rowOf(entry);
    return page + u"</tbody>\n</table>\n"_s + flightData(log) + u"</body>\n</html>\n"_s;
}

QString lastFlightPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)
        + u"/plum/what-happened.html"_s;
}

bool writeFlightPage(const QString &path, const QString &page)
{
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    file.write(page.toUtf8());
    return file.commit();
}

} // namespace plum
