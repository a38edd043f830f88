#include "helpers/browser/browser_window.h"
#include "platform/platform.h"
#include "platform/web_sandbox.h"

#include <QApplication>
#include <QFile>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

// Shows an address or a piece of HTML. The one argument says which; see BrowserRequest.
int main(int argc, char **argv)
{
    plum::prepareStandardStreams();
    const auto request = plum::BrowserRequest::fromCommandLine(plum::commandLine(argc, argv));
    const plum::StartEnvironment environment = plum::prepareEnvironment(true);
    if (!environment.hasDesktop) {
        std::fprintf(stderr, "browser.exe: %s\n", qUtf8Printable(environment.notice));
        return EXIT_FAILURE;
    }
    plum::prepareWebSandbox();
    // Otherwise the engine describes the graphics of this machine on standard error.
    if (!qEnvironmentVariableIsSet("QT_LOGGING_RULES"))
        qputenv("QT_LOGGING_RULES", "qt.webenginecontext=false");

    QApplication application(argc, argv);
    QApplication::setApplicationName(u"browser"_s);
    const auto platform = plum::createPlatform(QFile::decodeName(argv[0]));
    plum::BrowserWindow window(request);
    platform->onEndRequested([&window] { window.close(); });
    window.show();
    return QApplication::exec();
}
