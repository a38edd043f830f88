#pragma once

#include "platform/text_codec.h"

namespace plum {

// The system's encoding is UTF-8; bytes that are not valid UTF-8 come from a Chinese Windows and are read
// as GB18030.
class LinuxTextCodec final : public TextCodec
{
public:
    QString fromSystem(QByteArrayView bytes) override;
    QByteArray toSystem(QStringView text) override;
    QString fromGb2312(QByteArrayView bytes) override;
    QString fromUtf8(QByteArrayView bytes) override;
};

} // namespace plum
