// plum_unzip archive folder: the ZIP reader as a program.

#include "archive/unzip.h"
#include "plain_ports.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "usage: plum_unzip archive folder\n");
        return 2;
    }
    const plum::PlainPaths paths;
    plum::Utf8 codec;
    plum::Unzip reader(paths, codec);
    bool isGood = true;
    QObject::connect(&reader, &plum::Unzip::UnzipError, [&isGood](const QString &message, int index) {
        std::fprintf(stderr, "%s (entry %d)\n", qPrintable(message), index);
        isGood = false;
    });
    return reader.Init(arguments[1]) && reader.unzip(arguments[2]) && isGood ? 0 : 1;
}
