#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace plum {

class FlightLog;

// What a run did as data that stands in its page unseen, for who lays another run beside it.
QString flightData(const FlightLog &log);

// Reads it from a page. Nothing where there is no such data in it.
std::optional<FlightLog> flightOfPage(const QByteArray &page);

} // namespace plum
