#include "platform/shortcut_file.h"

#include "platform/text_codec.h"

#include <QtEndian>

#include <array>

namespace plum {

namespace {

constexpr quint32 headerSize = 0x4C;
constexpr std::array<uchar, 16> linkClass{0x01, 0x14, 0x02, 0x00, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46};

enum LinkFlag : quint32 {
    HasTargetIdList = 0x1,
    HasLinkInfo = 0x2,
    HasName = 0x4,
    HasRelativePath = 0x8,
    HasWorkingFolder = 0x10,
    HasArguments = 0x20,
    HasIconLocation = 0x40,
    IsUnicode = 0x80,
};

enum LinkInfoFlag : quint32 {
    HasLocalPath = 0x1,
    HasNetworkPath = 0x2,
};

constexpr quint32 environmentBlock = 0xA0000001;
constexpr qsizetype environmentAnsiAt = 8;
constexpr qsizetype environmentAnsiLength = 260;
constexpr qsizetype environmentUnicodeAt = environmentAnsiAt + environmentAnsiLength;
constexpr qsizetype environmentBlockSize = 0x314;

template <typename Integer> std::optional<Integer> integerAt(QByteArrayView bytes, qsizetype at)
{
    if (at < 0 || at > bytes.size() - static_cast<qsizetype>(sizeof(Integer)))
        return std::nullopt;
    return qFromLittleEndian<Integer>(bytes.data() + at);
}

quint32 number(QByteArrayView bytes, qsizetype at)
{
    return integerAt<quint32>(bytes, at).value_or(0);
}

// What follows `at`; empty when that is outside. 0 means that there is no such field.
QByteArrayView from(QByteArrayView bytes, quint32 at)
{
    return at == 0 || at >= static_cast<quint64>(bytes.size()) ? QByteArrayView() : bytes.sliced(at);
}

QString ansiText(QByteArrayView bytes, TextCodec &codec)
{
    const qsizetype end = bytes.indexOf('\0');
    return codec.fromSystem(end < 0 ? bytes : bytes.first(end));
}

QString unicodeText(QByteArrayView bytes)
{
    QString text;
    for (qsizetype at = 0; const auto unit = integerAt<char16_t>(bytes, at); at += 2) {
        if (*unit == 0)
            break;
        text += QChar(*unit);
    }
    return text;
}

QString networkShare(QByteArrayView link, TextCodec &codec)
{
    constexpr quint32 shortHeader = 0x14;
    const quint32 name = number(link, 8);
    if (name > shortHeader) {
        if (const QString share = unicodeText(from(link, number(link, 0x14))); !share.isEmpty())
            return share;
    }
    return ansiText(from(link, name), codec);
}

QString pathOfLinkInfo(QByteArrayView info, TextCodec &codec)
{
    const quint32 flags = number(info, 8);
    const bool hasUnicode = number(info, 4) >= 0x24;
    QString suffix = hasUnicode ? unicodeText(from(info, number(info, 0x20))) : QString();
    if (suffix.isEmpty())
        suffix = ansiText(from(info, number(info, 0x18)), codec);

    if (flags & HasLocalPath) {
        QString base = hasUnicode ? unicodeText(from(info, number(info, 0x1C))) : QString();
        if (base.isEmpty())
            base = ansiText(from(info, number(info, 0x10)), codec);
        if (!base.isEmpty())
            return base + suffix;
    }
    if (flags & HasNetworkPath) {
        const QString share = networkShare(from(info, number(info, 0x14)), codec);
        if (!share.isEmpty())
            return suffix.isEmpty() ? share : share + u'\\' + suffix;
    }
    return {};
}

// Walks through the parts of a link one after another; what does not fit ends the walk.
class Reader
{
public:
    explicit Reader(QByteArrayView rest)
        : m_rest(rest)
    {
    }

    QByteArrayView take(quint64 size)
    {
        if (size > static_cast<quint64>(m_rest.size())) {
            m_rest = {};
            return {};
        }
        const QByteArrayView taken = m_rest.first(static_cast<qsizetype>(size));
        m_rest = m_rest.sliced(static_cast<qsizetype>(size));
        return taken;
    }

    quint16 takeCount() { return integerAt<quint16>(take(2), 0).value_or(0); }

    // A part whose first four bytes are its size.
    QByteArrayView takeSized()
    {
        const quint32 size = number(m_rest, 0);
        return size < 4 ? take(static_cast<quint64>(m_rest.size())).first(0) : take(size);
    }

    bool atEnd() const { return m_rest.isEmpty(); }

private:
    QByteArrayView m_rest;
};

QString environmentTarget(Reader &reader, TextCodec &codec)
{
    while (!reader.atEnd()) {
        const QByteArrayView block = reader.takeSized();
        if (number(block, 4) != environmentBlock || block.size() < environmentBlockSize)
            continue;
        const QString target = unicodeText(block.sliced(environmentUnicodeAt));
        return target.isEmpty() ? ansiText(block.sliced(environmentAnsiAt, environmentAnsiLength), codec)
                                : target;
    }
    return {};
}

} // namespace

std::optional<ShortcutTarget> readShortcut(QByteArrayView bytes, TextCodec &codec)
{
    if (bytes.size() < static_cast<qsizetype>(headerSize) || number(bytes, 0) != headerSize
        || bytes.sliced(4, 16) != QByteArrayView(linkClass.data(), linkClass.size()))
        return std::nullopt;

    const quint32 flags = number(bytes, 0x14);
    Reader reader(bytes.sliced(headerSize));
    if (flags & HasTargetIdList)
        reader.take(reader.takeCount());
    if (flags & HasLinkInfo) {
        if (const QString path = pathOfLinkInfo(reader.takeSized(), codec); !path.isEmpty())
            return ShortcutTarget{path, false};
    }

    const quint64 unit = flags & IsUnicode ? 2 : 1;
    QString relativePath;
    for (const quint32 string : {HasName, HasRelativePath, HasWorkingFolder, HasArguments, HasIconLocation}) {
        if (!(flags & string))
            continue;
        const QByteArrayView text = reader.take(reader.takeCount() * unit);
        if (string == HasRelativePath)
            relativePath = unit == 2 ? unicodeText(text) : ansiText(text, codec);
    }

    if (const QString target = environmentTarget(reader, codec); !target.isEmpty())
        return ShortcutTarget{target, false};
    if (!relativePath.isEmpty())
        return ShortcutTarget{relativePath, true};
    return std::nullopt;
}

} // namespace plum
