#include "check/command_reference.h"
#include "check/textmate_grammar.h"
#include "kit/app_commands.h"
#include "kit/check_command.h"
#include "kit/debug_session.h"
#include "kit/dry_command.h"
#include "kit/editor_session.h"
#include "kit/launcher_commands.h"
#include "kit/option_rows.h"
#include "kit/pick_command.h"
#include "kit/run_options.h"
#include "kit/script_run.h"
#include "kit/sheet_command.h"
#include "kit/upgrade_command.h"
#include "look/translations.h"
#include "platform/paths.h"
#include "platform/platform.h"
#include "version/version.h"

#include <QApplication>
#include <QFile>

#include <cstdio>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using namespace plum::kit;

namespace {

constexpr char usage[] = R"(Plum's tools for people who work in a terminal.

  plumkit run [options] FILE [options]    runs a script and ends with it
  plumkit dry [options] FILE              says what a script would do, and does nothing
  plumkit check [options] FILE...         says what is wrong with scripts before they run
  plumkit sheet [options] FILE|FOLDER     says what a script may do
  plumkit upgrade [options] FILE          writes a script of edition 1 as one of edition 2
  plumkit debug                           runs a script step by step for an editor, by the debug adapter protocol
  plumkit pick [options]                  picks a point or a picture of the desktop for a line
  plumkit lsp                             talks to an editor by the language server protocol
  plumkit reference [options]             prints all commands, for people or for editors
  plumkit new [options] KEYWORD           makes a new app
  plumkit pack [options] FOLDER           makes the package of an app
  plumkit open FILE                       has the launcher ask whether to install a package, or to run or edit a script
  plumkit launcher WHAT                   has the launcher do something
  plumkit adopt FOLDER                    takes over the apps and settings of another program folder
  plumkit where                           says which folder holds the apps and settings
  plumkit --help                          shows this text
  plumkit --version                       shows the version
  plumkit COMMAND --help                  says more about a command
)";

constexpr char runUsage[] = R"(Runs a script like plum, and always ends.

  plumkit run [options] FILE [options]

  --timeout S         ends the run after S seconds
  --set name=value    a variable that the script finds when it begins; may be given several times
  --trace FILE        writes what the run did, line by line, as a page of HTML
  --scoped            keys and clicks go only to the window that was in front when the run last activated or
                      clicked one; the run waits while another one is
  --pictures          has pictures in that page: what was around the pointer, or where a search looked, before and
                      after each line
  --secrets           has answers and the clipboard's texts in that page, too
  --help              shows this text

What the last run did that failed, was stopped or ended late is kept without being asked for, in
plum/what-happened.html of the user's cache folder (~/.cache on Linux). Ends with status
  0    when the script is done
  1    with an error of the script, also one that was found before the run; it stands on standard error as
       FILE:line:column: sentence
  2    when the options are unusable or FILE cannot be read
  124  when the time was over
  130  when the run was stopped (Ctrl+C, or Esc held for 0.7 s), or a question was not answered
)";

constexpr char checkUsage[] = R"(Says what can be known about scripts before they run, a line each:
FILE:line:column: severity: sentence [rule]. docs/checks.md describes the rules.

  plumkit check [options] FILE|FOLDER|-...

  --format FORMAT     text, json or sarif (SARIF 2.1.0)
  --help              shows this text

A folder stands for all scripts in it and below, - for standard input. Ends with status
  0    when nothing was found but hints
  1    when something was found
  2    when the options are unusable or a FILE cannot be read
)";

constexpr char sheetUsage[]
    = R"(Says what a script may do, computed from its lines: what it sees, reads, writes, whom it contacts,
what it presses and starts.

  plumkit sheet [options] FILE|FOLDER

  --format FORMAT     text or json
  --help              shows this text

FOLDER is that of an app. Ends with status
  0    when the sheet is printed
  2    when the options are unusable or FILE cannot be read
)";

constexpr char lspUsage[]
    = R"(Talks to an editor on standard input and output by the language server protocol: what is found
in scripts as they are typed, completion, and what commands are for. docs/editors.md says how editors are told of it.

  plumkit lsp
)";

constexpr char debugUsage[]
    = R"(Runs a script for an editor that can debug, on standard input and output by the debug adapter protocol:
breakpoints, steps, variables, what the arguments of a line come to. docs/editors.md says how editors are told of it, and
what they can say about the run.

  plumkit debug

Ends with status
  0    when the editor has ended the talk; the run's own status it has been told
  1    when the talk broke off
  2    when there are options
)";

constexpr char referenceUsage[] = R"(Prints every command of the language with its fields.

  plumkit reference [options]

  --format FORMAT     markdown: a page for people; textmate: a grammar for the colours of editors
  --help              shows this text
)";

constexpr char newUsage[] = R"(Makes a new app: a folder with a script that runs.

  plumkit new [options] KEYWORD

  --in FOLDER         makes it there, not in the working directory
  --help              shows this text

Ends with status
  0    when the app is there; its script stands on standard output
  2    when the options are unusable or the app cannot be made
)";

constexpr char packUsage[] = R"(Makes the package of an app, KEYWORD.wfp. The same files give the same bytes.

  plumkit pack [options] FOLDER

  --output FILE       writes it there, not to the working directory
  --help              shows this text

What is found in its scripts stands on standard error. What does not belong into a package (links, hidden files, packages
and old copies) is left out and named. Ends with status
  0    when the package is there
  1    when a script has an error; then there is none
  2    when the options are unusable or the package cannot be made
)";

constexpr char upgradeUsage[] = R"(Writes a script of edition 1 as one of edition 2, on standard output.

  plumkit upgrade [options] FILE

  --output FILE       writes it there; it may be the script itself
  --help              shows this text

Both are run where nothing real happens, with the same desktop, files and answers, and have to do the same there. What
edition 1 passes over in silence, a colour that is not seen or a page that does not answer, is an error in edition 2 all the
same. Ends with status
  0    when the script is there
  1    when a line has no such words, or does something else then; it stands on standard error as
       FILE:line:column: sentence
  2    when the options are unusable, FILE cannot be read or the script cannot be written
)";

int run(int argc, char **argv, const QStringList &arguments)
{
    QString problem;
    const RunOptions options = readRunOptions(arguments, problem);
    if (!problem.isEmpty())
        return refuse(problem, runUsage);
    if (options.wantsHelp) {
        std::fputs(runUsage, stdout);
        return Done;
    }
    const plum::StartEnvironment environment = plum::prepareEnvironment(false);
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"plumkit"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    plum::installTranslation(application);
    ScriptRun script(QFile::decodeName(argv[0]), environment.hasDesktop);
    script.start(options);
    return QApplication::exec();
}

int check(int argc, char **argv, const QStringList &arguments)
{
    QString problem;
    const CheckOptions options = readCheckOptions(arguments, problem);
    if (!problem.isEmpty())
        return refuse(problem, checkUsage);
    if (options.wantsHelp) {
        std::fputs(checkUsage, stdout);
        return Done;
    }
    plum::prepareEnvironment(false);
    const QApplication application(argc, argv);
    return checkScripts(options, ScriptRun(QFile::decodeName(argv[0]), false).vocabulary());
}

int sheet(int argc, char **argv, const QStringList &arguments)
{
    QString problem;
    const SheetOptions options = readSheetOptions(arguments, problem);
    if (!problem.isEmpty())
        return refuse(problem, sheetUsage);
    if (options.wantsHelp) {
        std::fputs(sheetUsage, stdout);
        return Done;
    }
    plum::prepareEnvironment(false);
    const QApplication application(argc, argv);
    return printSheet(options, ScriptRun(QFile::decodeName(argv[0]), false).vocabulary());
}

int pack(int argc, char **argv, const QStringList &arguments)
{
    QString problem;
    const AppOptions options = readAppOptions(arguments, u"--output"_s, problem);
    if (!problem.isEmpty())
        return refuse(problem, packUsage);
    if (options.wantsHelp) {
        std::fputs(packUsage, stdout);
        return Done;
    }
    plum::prepareEnvironment(false);
    const QApplication application(argc, argv);
    return packFolder(options, ScriptRun(QFile::decodeName(argv[0]), false).vocabulary());
}

// A command whose standard streams carry messages. A status when that is not to be.
std::optional<int> refuseToTalk(const QStringList &arguments, const char *help)
{
    if (arguments == QStringList(u"--help"_s)) {
        std::fputs(help, stdout);
        return Done;
    }
    // Clients like to say what they talk over.
    if (!arguments.isEmpty() && arguments != QStringList(u"--stdio"_s))
        return refuse(u"there is no option %1"_s.arg(arguments.first()), help);
    return {};
}

int talkToEditor(int argc, char **argv, const QStringList &arguments)
{
    if (const std::optional<int> status = refuseToTalk(arguments, lspUsage))
        return *status;
    const plum::TalkFiles files = plum::takeStandardStreams();
    plum::prepareEnvironment(false);
    QApplication application(argc, argv);
    return serveEditor(ScriptRun(QFile::decodeName(argv[0]), false).vocabulary(), files,
        [&application](const QString &locale) { plum::installTranslation(application, QLocale(locale)); });
}

int talkToDebugger(int argc, char **argv, const QStringList &arguments)
{
    if (const std::optional<int> status = refuseToTalk(arguments, debugUsage))
        return *status;
    const plum::TalkFiles files = plum::takeStandardStreams();
    const plum::StartEnvironment environment = plum::prepareEnvironment(false);
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"plumkit"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    plum::installTranslation(application);
    DebugSession(QFile::decodeName(argv[0]), environment.hasDesktop, files).serve();
}

int reference(int argc, char **argv, const QStringList &arguments)
{
    if (arguments == QStringList(u"--help"_s)) {
        std::fputs(referenceUsage, stdout);
        return Done;
    }
    const bool asksForGrammar = arguments == QStringList({u"--format"_s, u"textmate"_s});
    if (!arguments.isEmpty() && !asksForGrammar && arguments != QStringList({u"--format"_s, u"markdown"_s}))
        return refuse(u"it takes --format markdown or --format textmate"_s, referenceUsage);
    plum::prepareEnvironment(false);
    const QApplication application(argc, argv);
    const plum::ScriptVocabulary vocabulary = ScriptRun(QFile::decodeName(argv[0]), false).vocabulary();
    const QString text
        = asksForGrammar ? plum::textMateGrammar(vocabulary) : plum::commandReference(vocabulary);
    std::fputs(text.toUtf8().constData(), stdout);
    return Done;
}

int pickLine(int argc, char **argv, const QStringList &arguments)
{
    QString problem;
    const PickOptions options = readPickOptions(arguments, problem);
    if (!problem.isEmpty())
        return refuse(problem, pickUsage);
    if (options.wantsHelp) {
        std::fputs(pickUsage, stdout);
        return Done;
    }
    return pick(argc, argv, options);
}

int upgradeEdition(int argc, char **argv, const QStringList &arguments)
{
    QString problem;
    const AppOptions options = readAppOptions(arguments, u"--output"_s, problem);
    if (!problem.isEmpty())
        return refuse(problem, upgradeUsage);
    if (options.wantsHelp) {
        std::fputs(upgradeUsage, stdout);
        return Done;
    }
    plum::prepareEnvironment(false);
    const QApplication application(argc, argv);
    return upgradeScript(options, ScriptRun(QFile::decodeName(argv[0]), false).vocabulary());
}

int makeNew(const QStringList &arguments)
{
    QString problem;
    const AppOptions options = readAppOptions(arguments, u"--in"_s, problem);
    if (!problem.isEmpty())
        return refuse(problem, newUsage);
    if (options.wantsHelp) {
        std::fputs(newUsage, stdout);
        return Done;
    }
    return makeNewApp(options);
}

// The folder of the program as it was called: a link to it has a library of its own.
int where(const char *programPath)
{
    const std::unique_ptr<plum::Platform> platform = plum::createPlatform(QFile::decodeName(programPath));
    const plum::Paths &paths = platform->paths();
    std::puts(qUtf8Printable(paths.toSystem(paths.programFolder())));
    return Done;
}

} // namespace

int main(int argc, char **argv)
{
    plum::prepareStandardStreams();
    QStringList arguments;
    for (int index = 1; index < argc; ++index)
        arguments += QString::fromLocal8Bit(argv[index]);
    if (arguments.isEmpty())
        return refuse(u"which command?"_s, usage);
    const QString command = arguments.takeFirst();
    const bool hasOwnHelp = command != "open"_L1 && command != "where"_L1;
    if (command == "--help"_L1 || (!hasOwnHelp && arguments.contains("--help"_L1))) {
        std::fputs(usage, stdout);
        return Done;
    }
    if (command == "--version"_L1) {
        std::printf("plumkit %s\n", plum::version);
        return Done;
    }
    if (command == "where"_L1)
        return where(argv[0]);
    if (command == "open"_L1)
        return openFile(argv[0], arguments);
    if (command == "launcher"_L1)
        return tellLauncher(argv[0], arguments);
    if (command == "adopt"_L1)
        return adopt(argv[0], arguments);
    if (command == "run"_L1)
        return run(argc, argv, arguments);
    if (command == "dry"_L1)
        return sayDry(argc, argv, arguments);
    if (command == "check"_L1)
        return check(argc, argv, arguments);
    if (command == "sheet"_L1)
        return sheet(argc, argv, arguments);
    if (command == "pack"_L1)
        return pack(argc, argv, arguments);
    if (command == "upgrade"_L1)
        return upgradeEdition(argc, argv, arguments);
    if (command == "debug"_L1)
        return talkToDebugger(argc, argv, arguments);
    if (command == "pick"_L1)
        return pickLine(argc, argv, arguments);
    if (command == "lsp"_L1)
        return talkToEditor(argc, argv, arguments);
    if (command == "reference"_L1)
        return reference(argc, argv, arguments);
    if (command == "new"_L1)
        return makeNew(arguments);
    return refuse(u"there is no command %1"_s.arg(command), usage);
}
