// plum_unzip archive folder: the ZIP reader as a program.

#include "platform/paths.h"
#include "platform/text_codec.h"
#include "store/unzip.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

class PlainPaths final : public plum::Paths
{
public:
    QString programFolder() const override { return {}; }
    QString toSystem(const QString &path) const override { return QString(path).replace(u'\\', u'/'); }
};

class Utf8 final : public plum::TextCodec
{
public:
    QString fromSystem(QByteArrayView bytes) override { return QString::fromUtf8(bytes); }
    QByteArray toSystem(QStringView text) override { return text.toUtf8(); }
    QString fromGb2312(QByteArrayView bytes) override { return QString::fromLatin1(bytes); }
    QString fromUtf8(QByteArrayView bytes) override { return QString::fromUtf8(bytes); }
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "usage: plum_unzip archive folder\n");
        return 2;
    }
    const PlainPaths paths;
    Utf8 codec;
    plum::Unzip reader(paths, codec);
    bool isGood = true;
    QObject::connect(&reader, &plum::Unzip::UnzipError, [&isGood](const QString &message, int index) {
        std::fprintf(stderr, "%s (entry %d)\n", qPrintable(message), index);
        isGood = false;
    });
    return reader.Init(arguments[1]) && reader.unzip(arguments[2]) && isGood ? 0 : 1;
}
