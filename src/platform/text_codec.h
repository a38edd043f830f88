#pragma once

#include <QByteArray>
#include <QString>

namespace plum {

// Text in the encodings that files and servers use. Nothing here fails: bytes that are no text become
// replacement characters, characters that an encoding lacks become "?".
class TextCodec
{
public:
    virtual ~TextCodec() = default;

    // The system's 8-bit encoding, in which scripts, settings and scripts' files are kept.
    // A mark of the encoding at the start (UTF-8's EF BB BF) is not part of the text.
    virtual QString fromSystem(QByteArrayView bytes) = 0;
    virtual QByteArray toSystem(QStringView text) = 0;

    // GB2312 as the field uses the name: with the extensions of GBK.
    virtual QString fromGb2312(QByteArrayView bytes) = 0;
    virtual QString fromUtf8(QByteArrayView bytes) = 0;
};

} // namespace plum
