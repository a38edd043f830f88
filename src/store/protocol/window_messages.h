#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QLatin1StringView>

#include <optional>

namespace plum {

// What the launcher and the process of the store window tell each other: JSON objects, one a line, over the
// process's standard input and output. Each has a verb, a line that is no such object is ignored.
namespace windowMessages {

// To the window.
inline constexpr QLatin1StringView show("show");
inline constexpr QLatin1StringView hide("hide");
inline constexpr QLatin1StringView navigate("navigate"); // address
inline constexpr QLatin1StringView write("write"); // html: replaces the page
inline constexpr QLatin1StringView clear("clear");
inline constexpr QLatin1StringView caption(
    "caption"); // text; meaning: in the language of the session; begins: a download
inline constexpr QLatin1StringView progress("progress"); // percent, total, done, speed
inline constexpr QLatin1StringView browserWidth("browserWidth"); // pixels
inline constexpr QLatin1StringView browserHeight("browserHeight"); // pixels
inline constexpr QLatin1StringView height("height"); // pixels
inline constexpr QLatin1StringView layOut("layOut");
inline constexpr QLatin1StringView loading("loading"); // visible
inline constexpr QLatin1StringView apps("apps"); // apps: keyword, version, newest of each
inline constexpr QLatin1StringView failed("failed"); // keyword: what was not installed; empty: nothing
inline constexpr QLatin1StringView end("end");

// From the window.
inline constexpr QLatin1StringView complete("complete"); // the top document has loaded
inline constexpr QLatin1StringView package("package"); // address: a link to a package was followed
inline constexpr QLatin1StringView open("open"); // address: a link wanted a window of its own
inline constexpr QLatin1StringView anew("anew"); // keyword: an installed app is wanted once more
inline constexpr QLatin1StringView retry("retry"); // what has failed is wanted once more
inline constexpr QLatin1StringView close("close");

} // namespace windowMessages

struct WindowMessage
{
    QString verb;
    QJsonObject fields;
};

// One line, its end included.
QByteArray toLine(QLatin1StringView verb, QJsonObject fields = {});

std::optional<WindowMessage> fromLine(QByteArrayView line);

} // namespace plum
