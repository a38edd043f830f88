#pragma once

#include <QByteArray>
#include <QString>

namespace plum {

// Text in one of the system's 8-bit encodings, by the code page's number. Bytes that are no text become
// replacement characters, characters that the code page lacks become "?".
QString fromCodePage(unsigned codePage, QByteArrayView bytes);
QByteArray toCodePage(unsigned codePage, QStringView text);

} // namespace plum
