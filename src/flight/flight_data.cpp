#include "flight/flight_data.h"

#include "flight/flight_log.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView opening("<pre id=\"run\" hidden>");
constexpr QLatin1StringView closing("</pre>");

// Times and pictures are for people.
QJsonObject objectOf(const FlightEntry &entry)
{
    QJsonArray deeds;
    for (const FlightEntry::Deed &deed : entry.deeds)
        deeds += QJsonArray{FlightDeed::nameOf(deed.what.kind), QJsonArray::fromStringList(deed.what.values)};
    QJsonArray variables;
    for (const auto &[name, value] : entry.variables)
        variables += QJsonArray{name, value};
    QJsonArray seen;
    for (const FlightEntry::Sight &sight : entry.seen)
        seen
            += QJsonArray{static_cast<int>(sight.kind), sight.what, sight.at.x(), sight.at.y(), sight.window};
    return {{u"file"_s, entry.line.file}, {u"passed"_s, entry.passedBefore}, {u"number"_s, entry.line.number},
        {u"text"_s, entry.line.text}, {u"fields"_s, QJsonArray::fromStringList(entry.fields)},
        {u"deeds"_s, deeds}, {u"variables"_s, variables}, {u"seen"_s, seen}, {u"reason"_s, entry.reason},
        {u"end"_s, entry.end ? static_cast<int>(*entry.end) : -1}};
}

QStringList textsOf(const QJsonValue &values)
{
    QStringList texts;
    for (const auto &value : values.toArray())
        texts += value.toString();
    return texts;
}

FlightEntry entryOf(const QJsonObject &object)
{
    FlightEntry entry;
    entry.line = {.file = object.value(u"file").toString(),
        .number = object.value(u"number").toInt(),
        .text = object.value(u"text").toString()};
    entry.passedBefore = object.value(u"passed").toInteger();
    entry.reason = object.value(u"reason").toString();
    const int end = object.value(u"end").toInt(-1);
    if (end >= 0 && end <= static_cast<int>(RunObserver::LineEnd::Stopped))
        entry.end = static_cast<RunObserver::LineEnd>(end);
    entry.fields = textsOf(object.value(u"fields"));
    for (const auto &deed : object.value(u"deeds").toArray()) {
        // Pages of newer versions may tell more.
        if (const auto kind = FlightDeed::kindOf(deed[0].toString()))
            entry.deeds += FlightEntry::Deed{.what = {*kind, textsOf(deed[1])}};
    }
    for (const auto &variable : object.value(u"variables").toArray())
        entry.variables += {variable[0].toString(), variable[1].toString()};
    for (const auto &sight : object.value(u"seen").toArray()) {
        const int kind = sight[0].toInt(-1);
        if (kind < 0 || kind > static_cast<int>(FlightEntry::Sight::Window))
            continue;
        entry.seen += FlightEntry::Sight{static_cast<FlightEntry::Sight::Kind>(kind), sight[1].toString(),
            {sight[2].toInt(), sight[3].toInt()}, sight[4].toInt()};
    }
    return entry;
}

} // namespace

QString flightData(const FlightLog &log)
{
    QJsonArray lines;
    for (const FlightEntry &entry : log.entries())
        lines += objectOf(entry);
    const QJsonObject run{{u"script"_s, log.script()}, {u"lines"_s, lines}};
    return opening + QString::fromUtf8(QJsonDocument(run).toJson(QJsonDocument::Compact)).toHtmlEscaped()
        + closing + u'\n';
}

std::optional<FlightLog> flightOfPage(const QByteArray &page)
{
    const QString text = QString::fromUtf8(page);
    // What a run did is escaped wherever it is shown.
    const qsizetype begin = text.indexOf(opening);
    const qsizetype end = begin < 0 ? -1 : text.indexOf(closing, begin);
    if (end < 0)
        return {};
    QString data = text.mid(begin + opening.size(), end - begin - opening.size());
    data.replace("&lt;"_L1, "<"_L1).replace("&gt;"_L1, ">"_L1).replace("&quot;"_L1, "\""_L1);
    data.replace("&amp;"_L1, "&"_L1);
    const QJsonDocument document = QJsonDocument::fromJson(data.toUtf8());
    if (!document.isObject())
        return {};
    FlightLog log;
    log.begin(document[u"script"].toString());
    for (const auto &line : document[u"lines"].toArray())
        log.add(entryOf(line.toObject()));
    return log;
}

} // namespace plum
