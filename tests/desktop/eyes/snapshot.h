#pragma once

#include <QByteArray>

namespace plum::eyes {

// Everything with a name that the program has on its windows at this moment, as one JSON text. Places are
// those on the screen.
QByteArray snapshot();

} // namespace plum::eyes
