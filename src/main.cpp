#include "commands/notices.h"
#include "look/translations.h"
#include "platform/paths.h"
#include "program.h"
#include "version/version.h"

#include <QApplication>
#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr char usage[] = R"(Plum runs small automation scripts, line by line.

  plum               starts the launcher, or fetches the one that runs already
  plum SCRIPT.wf     runs one script and ends with it
  plum -h, --help    shows this text
  plum --version     shows the version

Apps are in         %1/config/apps/
Settings are in     %1/config/load/
The manual is       docs/scripting.md

A script's lines end in CR LF, in edition 2 also in LF. Holding Esc for 0.7 seconds stops a run, as does "Stop"
in the launcher or in the menu of its tray icon. Ctrl+C stops a run that was started here, with status 130, and
ends one that stays after an error; so does closing the terminal.
)";

constexpr int wrongUsage = 2;

// What an option asks for; nothing when the command line is none.
std::optional<int> answerOption(const QString &commandLine, const QString &programPath)
{
    if (!commandLine.startsWith(u'-'))
        return {};
    if (commandLine == "--help"_L1 || commandLine == "-h"_L1) {
        const std::unique_ptr<plum::Platform> platform = plum::createPlatform(programPath);
        const plum::Paths &paths = platform->paths();
        std::fputs(
            qUtf8Printable(QString::fromUtf8(usage).arg(paths.toSystem(paths.programFolder()))), stdout);
        return EXIT_SUCCESS;
    }
    if (commandLine == "--version"_L1) {
        std::printf("plum %s\n", plum::version);
        return EXIT_SUCCESS;
    }
    plum::StandardErrorNotices().tell(
        u"there is no option \"%1\"; --help shows which there are."_s.arg(commandLine));
    return wrongUsage;
}

} // namespace

int main(int argc, char **argv)
{
    plum::prepareStandardStreams();
    const QString commandLine = plum::commandLine(argc, argv);
    const QString programPath = QFile::decodeName(argv[0]);
    if (const std::optional<int> status = answerOption(commandLine, programPath))
        return *status;

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

    plum::Program program(programPath, environment.hasDesktop,
        isScriptStart ? plum::Program::Purpose::ScriptStart : plum::Program::Purpose::Launcher);
    if (isScriptStart)
        program.runScript(commandLine);
    else if (!program.startLauncher())
        return EXIT_SUCCESS;
    return QApplication::exec();
}
