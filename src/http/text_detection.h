#pragma once

#include <QByteArrayView>
#include <QString>

namespace plum {

class TextCodec;

// Whether bytes from a server count as UTF-8: those with its byte-order mark, and those outside ASCII that
// form two- and three-byte sequences throughout. Sequences of four bytes do not count (kept: pages with
// them are read as GB2312), nor do fewer than three bytes, nor pure ASCII, which reads the same either way.
bool IsUtf8(QByteArrayView bytes);

// The bytes as UTF-8 where they count as such, else as GB2312. A byte-order mark is not part of the text.
QString BytesToText(QByteArrayView bytes, TextCodec &codec);

} // namespace plum
