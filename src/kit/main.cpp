#include "kit/run_options.h"
#include "kit/script_run.h"
#include "platform/platform.h"
#include "ui/translations.h"

#include <QApplication>
#include <QFile>

#include <cstdio>

using namespace Qt::StringLiterals;
using namespace plum::kit;

namespace {

constexpr char usage[] = R"(Plum's tools for people who work in a terminal.

  plumkit run [options] FILE [options]    runs a script and ends with it
  plumkit --help                          shows this text
  plumkit COMMAND --help                  says more about a command
)";

constexpr char runUsage[] = R"(Runs a script like plum, and always ends.

  plumkit run [options] FILE [options]

  --timeout S         ends the run after S seconds
  --set name=value    a variable that the script finds when it begins; may be given several times
  --help              shows this text

Ends with status
  0    when the script is done
  1    with an error of the script, also one that was found before the run; it stands on standard error as
       FILE:line:column: sentence
  2    when the options are unusable or FILE cannot be read
  124  when the time was over
  130  when the run was stopped with Ctrl+C, or a question was not answered
)";

int refuse(const QString &problem, const char *help)
{
    std::fprintf(stderr, "plumkit: %s\n\n%s", qUtf8Printable(problem), help);
    return Unusable;
}

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
    if (command == "--help"_L1) {
        std::fputs(usage, stdout);
        return Done;
    }
    if (command == "run"_L1)
        return run(argc, argv, arguments);
    return refuse(u"there is no command %1"_s.arg(command), usage);
}
