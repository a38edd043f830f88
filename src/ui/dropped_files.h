#pragma once

#include <QStringList>

class QDropEvent;
class QMimeData;

namespace plum {

// The paths of dropped files, in the system's form. Addresses of other machines are none.
QStringList droppedFiles(const QMimeData *data);

// Accepts a drag that carries files and lets any other go.
void acceptFiles(QDropEvent &drag);

} // namespace plum
