#pragma once

#include <QIcon>

namespace plum {

// The program's picture, a plum with a leaf, drawn at whatever sizes a desktop asks for.
QIcon appIcon();

} // namespace plum
