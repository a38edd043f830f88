#pragma once

#include <QByteArray>

#include <optional>

namespace plum {

// What a body holds that was sent with this Content-Encoding: gzip or deflate; of another one, the body
// itself. Nothing when the compressed data does not reach its own end, is damaged, or holds more than `most`
// bytes.
std::optional<QByteArray> decodedContent(const QByteArray &encoding, const QByteArray &body, qint64 most);

// Whether such a body says itself where it ends.
bool tellsItsEnd(const QByteArray &encoding);

} // namespace plum
