#pragma once

#include "platform/paths.h"
#include "platform/text_codec.h"

namespace plum {

// The ports that the store's units need, for small programs around them: UTF-8, and "\" as "/".
class PlainPaths final : public Paths
{
public:
    QString programFolder() const override { return {}; }
    QString toSystem(const QString &path) const override { return QString(path).replace(u'\\', u'/'); }
    bool interpretsNames() const override { return false; }
};

class Utf8 final : public TextCodec
{
public:
    QString fromSystem(QByteArrayView bytes) override { return QString::fromUtf8(bytes); }
    QByteArray toSystem(QStringView text) override { return text.toUtf8(); }
    QString fromGb2312(QByteArrayView bytes) override { return QString::fromLatin1(bytes); }
    QString fromUtf8(QByteArrayView bytes) override { return QString::fromUtf8(bytes); }
};

} // namespace plum
