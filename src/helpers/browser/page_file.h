#pragma once

#include <QUrl>

namespace plum {

// Puts `html` into a file of the user's temporary folder, where it stays for the browser that reads it.
// Returns the file's address; an empty one when it cannot be written.
QUrl writePageFile(const QString &html);

} // namespace plum
