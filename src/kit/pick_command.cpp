#include "kit/pick_command.h"

#include "kit/run_options.h"
#include "look/translations.h"
#include "picker/picked_picture.h"
#include "picker/picker.h"
#include "platform/platform.h"
#include "platform/pointer.h"

#include <QApplication>
#include <QDir>
#include <QFile>

#include <array>
#include <cstdio>

namespace plum::kit {

using namespace Qt::StringLiterals;

const char pickUsage[]
    = R"(Picks a point of the desktop, or a picture of a part of it, and writes the lines of a script for it.

  plumkit pick [options]

  --line KIND         writes that line alone: move, color, window or picture; what else is known of the point stands
                      on standard error
  --edition N         writes lines of edition 1 or 2 of the language; 2 if nothing is said
  --in FOLDER         keeps a picture there, not in the working directory
  --help              shows this text

The desktop stands still meanwhile. The mouse or the arrows (with Shift ten pixels) move the mark; Enter or a click takes the
point, a drag or Space at both corners a picture, which is looked for on the screen at once; Esc gives up. Ends with status
  0    when something was picked
  2    when the options are unusable, there is no desktop, or the picture cannot be written
  130  when the user gave up
)";

namespace {

struct LineWord
{
    QLatin1StringView word;
    PickedLine line;
};

constexpr std::array lineWords{
    LineWord{"move"_L1, PickedLine::Move},
    LineWord{"color"_L1, PickedLine::Colour},
    LineWord{"window"_L1, PickedLine::Window},
    LineWord{"picture"_L1, PickedLine::Picture},
};

void print(std::FILE *stream, const QStringList &lines)
{
    for (const QString &line : lines)
        std::fprintf(stream, "%s\n", qUtf8Printable(line));
}

// Without a wish for one line, every line that the point is good for.
void printPoint(const PickOptions &options, const PickedPoint &point, PickedLine chosen)
{
    print(options.line ? stderr : stdout, factsOf(point));
    if (options.line) {
        print(stdout, linesFor(chosen, point, options.edition));
        return;
    }
    for (const PickedLine line : {PickedLine::Move, PickedLine::Colour, PickedLine::Window})
        print(stdout, linesFor(line, point, options.edition));
}

int printPicture(const PickOptions &options, const DesktopView &view, const QRect &part)
{
    const PickedPicture picture = savePicture(view, part, options.folder);
    print(options.line || picture.fileName.isEmpty() ? stderr : stdout, picture.report);
    if (picture.fileName.isEmpty())
        return Unusable;
    print(stdout, {lineForPicture(picture.fileName, options.edition)});
    return Done;
}

} // namespace

PickOptions readPickOptions(const QStringList &arguments, QString &problem)
{
    PickOptions options;
    options.folder = QDir::currentPath();
    for (qsizetype index = 0; index < arguments.size() && problem.isEmpty(); ++index) {
        const QString &name = arguments[index];
        if (name == "--help"_L1) {
            options.wantsHelp = true;
            continue;
        }
        if (name != "--line"_L1 && name != "--edition"_L1 && name != "--in"_L1) {
            problem = u"there is no option %1"_s.arg(name);
            break;
        }
        if (++index == arguments.size()) {
            problem = u"%1 needs a value"_s.arg(name);
            break;
        }
        const QString &value = arguments[index];
        if (name == "--line"_L1) {
            const auto row = std::ranges::find(lineWords, value, &LineWord::word);
            if (row == lineWords.end())
                problem = u"--line takes move, color, window or picture, not \"%1\""_s.arg(value);
            else
                options.line = row->line;
        } else if (name == "--edition"_L1) {
            options.edition = value == "1"_L1 ? Edition::One : Edition::Two;
            if (value != "1"_L1 && value != "2"_L1)
                problem = u"--edition takes 1 or 2, not \"%1\""_s.arg(value);
        } else {
            options.folder = value;
            if (!QDir(value).exists())
                problem = u"there is no folder %1"_s.arg(value);
        }
    }
    return options;
}

int pick(int argc, char **argv, const PickOptions &options)
{
    const StartEnvironment environment = prepareEnvironment(false);
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"plumkit"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    installTranslation(application);
    const std::unique_ptr<Platform> platform = createPlatform(QFile::decodeName(argv[0]));
    const auto view
        = environment.hasDesktop ? DesktopView::take(platform->screen(), platform->windows()) : std::nullopt;
    if (!view) {
        std::fputs("plumkit: there is no desktop that can be looked at\n", stderr);
        return Unusable;
    }
    Picker picker(*view, {options.line.value_or(PickedLine::Move), options.edition});
    QObject::connect(&picker, &Picker::pointTaken, &picker, [&](const PickedPoint &point, PickedLine line) {
        printPoint(options, point, line);
        QApplication::exit(Done);
    });
    QObject::connect(&picker, &Picker::rectangleTaken, &picker,
        [&](const QRect &part) { QApplication::exit(printPicture(options, *view, part)); });
    QObject::connect(&picker, &Picker::givenUp, &picker, [] { QApplication::exit(Stopped); });
    picker.start(platform->pointer().position());
    return QApplication::exec();
}

} // namespace plum::kit
