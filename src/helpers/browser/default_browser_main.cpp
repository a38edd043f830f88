#include "helpers/browser/browser_request.h"
#include "helpers/browser/page_file.h"
#include "platform/platform.h"
#include "platform/shell.h"

#include <QApplication>
#include <QFile>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

// Shows an address or a piece of HTML in the default browser, for a Plum that was built without a browser of
// its own. The one argument says which; see BrowserRequest. The browser has its own way with titles.
int main(int argc, char **argv)
{
    plum::prepareStandardStreams();
    const auto request = plum::BrowserRequest::fromCommandLine(plum::commandLine(argc, argv));
    plum::prepareEnvironment(false);
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"browser"_s);
    const auto platform = plum::createPlatform(QFile::decodeName(argv[0]));

    const QUrl page = request.address.isEmpty() ? plum::writePageFile(request.html) : request.address;
    const QString address = page.toString(QUrl::FullyEncoded);
    if (!page.isEmpty() && platform->shell().open(address, {}, plum::ShowState::Normal))
        return EXIT_SUCCESS;
    std::fprintf(stderr, "browser.exe: cannot show %s\n", qUtf8Printable(address));
    return EXIT_FAILURE;
}
