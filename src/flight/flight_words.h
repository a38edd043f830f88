#pragma once

#include <QCoreApplication>

namespace plum {

// What the flight recorder and its page say, in the language of the session.
class FlightWords
{
    Q_DECLARE_TR_FUNCTIONS(plum::FlightWords)
};

} // namespace plum
