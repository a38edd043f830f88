#pragma once

#include <QString>

namespace plum {

class Film;
class FlightLog;

// The run as one page of HTML, with nothing in it that is fetched or carried out.
QString flightPage(const FlightLog &log, const Film &film);

// Where the page of the last run that failed is kept: a file of the user's cache.
QString lastFlightPath();

// Writes a page that its owner alone may read. False when that was not possible.
bool writeFlightPage(const QString &path, const QString &page);

} // namespace plum
