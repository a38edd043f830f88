#include "commands/notices.h"
#include "program.h"
#include "ui/translations.h"

#include <QApplication>
#include <QFile>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr char usage[] = R"(Plum runs small automation scripts, line by line.

  plum               starts the launcher
  plum SCRIPT.wf     runs one script and ends with it
  plum --help        shows this text
  plum --version     shows the version

A script's lines end in CR LF, in edition 2 also in LF. docs/scripting.md describes the language.
)";

} // namespace

int main(int argc, char **argv)
{
    plum::prepareStandardStreams();
    const QString commandLine = plum::commandLine(argc, argv);
    if (commandLine == "--help"_L1) {
        std::fputs(usage, stdout);
        return EXIT_SUCCESS;
    }
    if (commandLine == "--version"_L1) {
        std::puts("plum " PLUM_VERSION);
        return EXIT_SUCCESS;
    }

    const bool isScriptStart = !commandLine.isEmpty();
    const plum::StartEnvironment environment = plum::prepareEnvironment(!isScriptStart);
    if (!environment.notice.isEmpty())
        plum::StandardErrorNotices().tell(environment.notice);
    if (!isScriptStart && !environment.hasDesktop)
        return EXIT_FAILURE;

    QApplication application(argc, argv);
    QApplication::setApplicationName(u"plum"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    plum::installTranslation(application);

    plum::Program program(QFile::decodeName(argv[0]), environment.hasDesktop);
    if (isScriptStart)
        program.runScript(commandLine);
    else if (!program.startLauncher())
        return EXIT_SUCCESS;
    return QApplication::exec();
}
