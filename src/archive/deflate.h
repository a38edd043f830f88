#pragma once

#include <QByteArray>

namespace plum {

// `bytes` as a raw DEFLATE stream (RFC 1951), the same for the same bytes. Small rather than quick: it is
// made once and downloaded often.
QByteArray deflated(QByteArrayView bytes);

} // namespace plum
