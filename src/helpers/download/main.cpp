#include "helpers/download/download_window.h"
#include "look/translations.h"
#include "platform/platform.h"

#include <QApplication>
#include <QFile>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

// Downloads one file and shows how it goes. The one argument is address@@@folder@@@file name@@@label.
int main(int argc, char **argv)
{
    plum::prepareStandardStreams();
    const auto request = plum::DownloadRequest::fromCommandLine(plum::commandLine(argc, argv));
    if (!request) {
        std::fputs("usage: download.exe ADDRESS@@@FOLDER@@@NAME@@@LABEL\n", stderr);
        return EXIT_FAILURE;
    }
    const plum::StartEnvironment environment = plum::prepareEnvironment(true);
    if (!environment.hasDesktop) {
        std::fprintf(stderr, "download.exe: %s\n", qUtf8Printable(environment.notice));
        return EXIT_FAILURE;
    }

    QApplication application(argc, argv);
    QApplication::setApplicationName(u"download"_s);
    plum::installTranslation(application);
    const auto platform = plum::createPlatform(QFile::decodeName(argv[0]));
    plum::DownloadWindow window(*request, platform->paths());
    platform->onEndRequested([&window] { window.close(); });
    window.show();
    window.start();
    QApplication::exec();
    return window.isComplete() ? EXIT_SUCCESS : EXIT_FAILURE;
}
