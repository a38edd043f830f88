#include "commands/store_page.h"
#include "engine/run_time_error.h"
#include "platform/platform.h"
#include "script_system.h"
#include "ui/script_windows.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr char usage[] = R"(Plum runs small automation scripts, line by line.

  plum               starts the launcher
  plum SCRIPT.wf     runs one script and ends with it
  plum --help        shows this text
  plum --version     shows the version

A script's lines end in CR LF. docs/scripting.md describes the language.
)";

void say(const QString &line)
{
    std::fprintf(stderr, "plum: %s\n", qUtf8Printable(line));
}

// A script that was loaded as one long line was most likely saved with line feeds alone.
bool looksLikeLineFeedsOnly(const QStringList &lines)
{
    return lines.size() == 1 && lines.front().contains(u'\n');
}

// Ends without unwinding: a script may be anywhere inside nested waits.
[[noreturn]] void endProcess(plum::Platform &platform, int status)
{
    platform.releaseDesktop();
    std::fflush(nullptr);
    std::_Exit(status);
}

// A script start has no store window.
class NoStorePage final : public plum::StorePage
{
public:
    void setBrowserWidth(int) override { }
    void setBrowserHeight(int) override { }
    void navigateToBlank() override { }
    void layOut() override { }
    void showLoadingPicture() override { }
};

void runScriptOf(const QString &commandLine, plum::ScriptSystem &scripts)
{
    const plum::RunStart::CommandLineScript script = scripts.starts().prepareCommandLine(commandLine);
    if (script.path.isEmpty())
        say(u"\"%1\" is not the path of a script (it does not end in \".wf\"); nothing is run."_s.arg(
            commandLine));
    else if (!script.loaded)
        say(u"cannot read %1; nothing is run."_s.arg(script.path));
    else if (looksLikeLineFeedsOnly(scripts.state().runlist))
        say(u"%1 has no CR LF line ends and is therefore one single line."_s.arg(script.path));

    try {
        scripts.starts().runAll();
    } catch (const plum::RunTimeError &error) {
        say(u"%1:%2: run-time error %3: %4"_s.arg(script.path)
                .arg(error.line().value_or(0) + 1)
                .arg(error.number())
                .arg(error.description()));
    }
}

} // namespace

int main(int argc, char **argv)
{
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
        say(environment.notice);
    if (!isScriptStart && !environment.hasDesktop)
        return EXIT_FAILURE;

    QApplication application(argc, argv);
    QApplication::setApplicationName(u"plum"_s);
    QApplication::setQuitOnLastWindowClosed(false);

    const auto platform = plum::createPlatform(QFile::decodeName(argv[0]));
    plum::ScriptWindows windows({});
    NoStorePage storePage;
    plum::ScriptSystem scripts(
        *platform, windows, storePage, QFileInfo(QFile::decodeName(argv[0])).completeBaseName());
    windows.setActions({
        .confirmInput =
            [&](const QString &variable, const QString &text) {
                scripts.state().vardict.SetVar(variable, text);
                scripts.starts().resume();
            },
        .endProcess = [&] { endProcess(*platform, EXIT_SUCCESS); },
    });
    platform->onEndRequested([&] { endProcess(*platform, EXIT_SUCCESS); });

    runScriptOf(commandLine, scripts);
    return QApplication::exec();
}
