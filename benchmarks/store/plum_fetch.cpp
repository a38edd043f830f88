// plum_fetch address file: the downloader as a program. It ends with 0 when the file is complete, else with
// the downloader's last status.

#include "download/win_http_down.h"
#include "plain_ports.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "usage: plum_fetch address file\n");
        return EXIT_FAILURE;
    }
    const plum::PlainPaths paths;
    plum::Utf8 codec;
    plum::WinHttpDown downloader(paths, codec);
    QObject::connect(&downloader, &plum::WinHttpDown::Status, [](plum::DownloadStatus status) {
        if (!isOnTheWay(status))
            QCoreApplication::exit(
                status == plum::DownloadStatus::Complete ? EXIT_SUCCESS : static_cast<int>(status));
    });
    downloader.setUrl(arguments[1]);
    downloader.setTarget(QString(arguments[2]).replace(u'/', u'\\'));
    QTimer::singleShot(0, &downloader, &plum::WinHttpDown::GetStart);
    return QCoreApplication::exec();
}
