#include "http/multipart_body.h"

#include "platform/text_codec.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <cstring>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView boundaryHyphens("---------------------------");
constexpr int boundaryRandomLength = 13;

bool isAlnum(char16_t c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9');
}

// Head, file and tail one after another. Nothing is buffered on top of what the reader asks for.
class MultipartBody final : public QIODevice
{
public:
    MultipartBody(QByteArray head, std::unique_ptr<QIODevice> file, QByteArray tail)
        : m_head(std::move(head))
        , m_file(std::move(file))
        , m_fileSize(m_file->size())
        , m_tail(std::move(tail))
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    qint64 size() const override { return m_head.size() + m_fileSize + m_tail.size(); }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        qint64 done = 0;
        while (done < maxSize && pos() + done < size()) {
            const qint64 taken = readPiece(data + done, maxSize - done, pos() + done);
            if (taken <= 0)
                return done > 0 ? done : -1;
            done += taken;
        }
        return done;
    }

    qint64 writeData(const char *, qint64) override { return -1; }

private:
    qint64 readPiece(char *data, qint64 maxSize, qint64 at)
    {
        if (at < m_head.size())
            return copy(m_head, data, maxSize, at);
        at -= m_head.size();
        if (at < m_fileSize)
            return m_file->seek(at) ? m_file->read(data, std::min(maxSize, m_fileSize - at)) : -1;
        return copy(m_tail, data, maxSize, at - m_fileSize);
    }

    static qint64 copy(const QByteArray &from, char *data, qint64 maxSize, qint64 at)
    {
        const qint64 count = std::min(maxSize, from.size() - at);
        std::memcpy(data, from.constData() + at, static_cast<size_t>(count));
        return count;
    }

    QByteArray m_head;
    std::unique_ptr<QIODevice> m_file;
    qint64 m_fileSize;
    QByteArray m_tail;
};

// As browsers write it: as it is, a quote or a line end would end the name.
QString quotable(QString name)
{
    return name.replace(u'"', "%22"_L1).replace(u'\r', "%0D"_L1).replace(u'\n', "%0A"_L1);
}

} // namespace

QString RandomAlnum(int count)
{
    QString text;
    while (text.size() < count) {
        const auto drawn = static_cast<char16_t>(QRandomGenerator::system()->bounded(127));
        if (isAlnum(drawn))
            text += QChar(drawn);
    }
    return text;
}

QString MakeBoundary()
{
    return boundaryHyphens + RandomAlnum(boundaryRandomLength);
}

QString PartHeader(const QString &field, const QString &file, const QString &contentType)
{
    return uR"(Content-Disposition: form-data; name="{field}";)"_s.replace(u"{field}"_s, quotable(field))
        + uR"( filename="{file}")"_s.replace(u"{file}"_s, quotable(file)) + u"\r\n"_s
        + u"Content-Type: {ct}"_s.replace(u"{ct}"_s, contentType) + u"\r\n\r\n"_s;
}

QByteArray TextToBytes(const QString &text, TextCodec &codec)
{
    return codec.toSystem(text);
}

std::unique_ptr<QIODevice> ReadFileBytes(const QString &path)
{
    auto file = std::make_unique<QFile>(path);
    if (!QFileInfo(*file).isFile() || !file->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return nullptr;
    return file;
}

std::unique_ptr<QIODevice> BuildMultipartBody(std::unique_ptr<QIODevice> fileBytes, const QString &boundary,
    const QString &partHeader, TextCodec &codec)
{
    return std::make_unique<MultipartBody>(TextToBytes(u"--"_s + boundary + u"\r\n"_s + partHeader, codec),
        std::move(fileBytes), TextToBytes(u"\r\n--"_s + boundary + u"--\r\n"_s, codec));
}

} // namespace plum
