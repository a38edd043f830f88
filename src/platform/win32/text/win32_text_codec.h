#pragma once

#include "platform/text_codec.h"

namespace plum {

// The system's encoding is the ANSI code page. A file that begins with the mark of UTF-8 is UTF-8.
class Win32TextCodec final : public TextCodec
{
public:
    QString fromSystem(QByteArrayView bytes) override;
    QByteArray toSystem(QStringView text) override;
    QString fromGb2312(QByteArrayView bytes) override;
    QString fromUtf8(QByteArrayView bytes) override;
};

} // namespace plum
