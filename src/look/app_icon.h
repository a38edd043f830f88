#pragma once

#include <QIcon>

namespace plum {

// The program's picture, a plum with a leaf: drawn at every size that a desktop may ask for, which takes some
// milliseconds, or at one, `side` logical pixels at `scale` physical pixels each.
QIcon appIcon();
QIcon runningIcon(); // with a sign that a script runs
QPixmap appPicture(int side, qreal scale);

} // namespace plum
