#include "http/multipart_body.h"
#include "platform/linux/linux_text_codec.h"

#include <QBuffer>

#include <cstdint>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

// The text between `from` and `to`, both of which it must lie between.
QByteArray between(const QByteArray &text, const QByteArray &from, const QByteArray &to)
{
    const qsizetype start = text.indexOf(from) + from.size();
    const qsizetype end = text.indexOf(to, start);
    if (start < from.size() || end < 0)
        std::abort();
    return text.sliced(start, end - start);
}

} // namespace

// Field, file name and content type, one a line, then the file's bytes. A reader that knows the boundary
// alone gets all of them back, however the body is read.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QList<QByteArray> lines = input.split('\n');
    plum::LinuxTextCodec codec;
    QStringList texts;
    qsizetype used = 0;
    for (int i = 0; i < 3; ++i) {
        used += lines.value(i).size() + 1;
        texts += QString::fromUtf8(lines.value(i)).remove(u'"').remove(u'\r');
    }
    QByteArray content = input.mid(used);
    const QString boundary = plum::MakeBoundary();

    auto file = std::make_unique<QBuffer>();
    file->setData(content);
    file->open(QIODevice::ReadOnly);
    const auto body = plum::BuildMultipartBody(
        std::move(file), boundary, plum::PartHeader(texts[0], texts[1], texts[2]), codec);
    const QByteArray whole = body->readAll();
    if (whole.size() != body->size())
        std::abort();

    const QByteArray mark = "--" + boundary.toLatin1();
    if (!whole.startsWith(mark + "\r\n") || !whole.endsWith("\r\n" + mark + "--\r\n"))
        std::abort();
    const qsizetype headEnd = whole.indexOf("\r\n\r\n") + 4;
    const QByteArray head = whole.first(headEnd);
    if (whole.sliced(headEnd).chopped(mark.size() + 6) != content)
        std::abort();
    if (between(head, "; name=\"", "\"; filename=\"") != codec.toSystem(texts[0])
        || between(head, "\"; filename=\"", "\"\r\n") != codec.toSystem(texts[1])
        || between(head, "\r\nContent-Type: ", "\r\n\r\n") != codec.toSystem(texts[2])) {
        std::abort();
    }

    body->seek(0);
    QByteArray inPieces;
    const qint64 piece = size % 17 + 1;
    for (QByteArray next = body->read(piece); !next.isEmpty(); next = body->read(piece))
        inPieces += next;
    if (inPieces != whole)
        std::abort();
    return 0;
}
