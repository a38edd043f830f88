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

constexpr const char *usage = QT_TRANSLATE_NOOP("plum::Usage",
    "Plum runs small automation scripts, line by line.\n"
    "\n"
    "  plum               starts the launcher, or fetches the one that runs already\n"
    "  plum SCRIPT.wf     runs one script and ends with it\n"
    "  plum -h, --help    shows this text\n"
    "  plum --version     shows the version\n"
    "\n"
    "Apps are in         %1/config/apps/\n"
    "Settings are in     %1/config/load/\n"
    "The manual is       docs/scripting.md\n"
    "\n"
    "A script's lines end in CR LF, in edition 2 also in LF. Holding Esc for 0.7 seconds stops a run, as "
    "does \"Stop\"\n"
    "in the launcher or in the menu of its tray icon. Ctrl+C stops a run that was started here, with status "
    "130, and\n"
    "ends one that stays after an error; so does closing the terminal.\n");

constexpr int wrongUsage = 2;

// What an option asks for; nothing when the command line is none.
std::optional<int> answerOption(int argc, char **argv, const QString &commandLine, const QString &programPath)
{
    if (!commandLine.startsWith(u'-'))
        return {};
    const QCoreApplication application(argc, argv);
    plum::installTranslation(*QCoreApplication::instance());
    if (commandLine == "--help"_L1 || commandLine == "-h"_L1) {
        const std::unique_ptr<plum::Platform> platform = plum::createPlatform(programPath);
        const plum::Paths &paths = platform->paths();
        std::fputs(
            qUtf8Printable(
                QCoreApplication::translate("plum::Usage", usage).arg(paths.toSystem(paths.programFolder()))),
            stdout);
        return EXIT_SUCCESS;
    }
    if (commandLine == "--version"_L1) {
        std::printf("plum %s\n", plum::version);
        return EXIT_SUCCESS;
    }
    plum::StandardErrorNotices().tell(
        QCoreApplication::translate("plum::Usage", "there is no option \"%1\"; --help shows which there are.")
            .arg(commandLine));
    return wrongUsage;
}

} // namespace

int main(int argc, char **argv)
{
    plum::prepareStandardStreams();
    const QString commandLine = plum::commandLine(argc, argv);
    const QString programPath = QFile::decodeName(argv[0]);
    if (const std::optional<int> status = answerOption(argc, argv, commandLine, programPath))
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
