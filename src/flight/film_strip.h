#pragma once

#include <QString>

namespace plum {

class Film;
class FlightLog;

// The pictures before and after each line, from left to right, as HTML; empty where there are none.
QString filmStrip(const FlightLog &log, const Film &film);

} // namespace plum
