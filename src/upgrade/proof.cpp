#include "upgrade/proof.h"

#include "check/edition1/script_line.h"
#include "engine/editions/later_edition.h"
#include "engine/editions/script_error.h"
#include "engine/run_time_error.h"
#include "recording/recording_commands.h"
#include "recording/script_bench.h"

#include <QDirIterator>
#include <QImage>
#include <QTemporaryDir>

#include <functional>
#include <utility>

namespace plum::upgrade {

using namespace Qt::StringLiterals;
using recording::ScriptBench;

namespace {

constexpr double longestRun = 1e12; // milliseconds of waits, which take no time here
constexpr int mostWaits = 1'000'000;
constexpr int mostAnswers = 1000;
constexpr QSize screenSize(320, 240);
constexpr QPoint pictureAt(160, 120);
constexpr qint64 largestFile = 1 << 20; // bytes, of those beside the script
constexpr int mostFiles = 200;
constexpr auto pause = "wait 10"_L1;
constexpr auto endOfProcess = "end process"_L1; // which a last tip keeps from coming in edition 1
constexpr RunTicket onlyRun = 1; // the first of its bench

// What is typed behind the keyword and answered to questions: most scripts want a number or pieces.
struct Inputs
{
    QString typed;
    QString answer;
};
const QList<Inputs> allInputs{{u"app 3,4"_s, u"5"_s}, {u"app 3"_s, u"yes"_s}};

// The run goes on for ever.
struct Endless
{
};

// What a script finds before it runs, and what it leaves behind.
struct Outcome
{
    QStringList events;
    QMap<QString, QByteArray> files;
    std::optional<Difference> end; // of a run that did not reach its end
};

QString scriptFolder(const QString &disk)
{
    return disk + u"/script"_s;
}

void write(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(content);
}

QMap<QString, QByteArray> filesBelow(const QString &folder)
{
    QMap<QString, QByteArray> found;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            found[file.fileName().sliced(folder.size())] = file.readAll();
    }
    return found;
}

// The quoted texts of a line behind its head.
QStringList textsOf(const edition1::ScriptLine &line)
{
    QStringList texts;
    if (line.arguments) {
        for (const edition1::Value &value : line.arguments->values(u',')) {
            if (value.isLiteral())
                texts += value.text;
        }
    }
    return texts;
}

class Place
{
public:
    Place(const QStringList &script, const QString &folder, const QString &disk)
        : m_script(script)
        , m_folder(folder)
        , m_disk(disk)
    {
    }

    void fill(ScriptBench &bench, const Inputs &inputs)
    {
        copyFiles();
        bench.platform.paths().root = m_disk;
        QDir().mkpath(bench.platform.paths().toSystem(bench.platform.paths().folder + u"/config/apps"_s));
        bench.platform.clipboard().content = u"copied"_s;
        bench.platform.pointer().at = {120, 45};
        bench.launcher.keywordBox = inputs.typed;
        bench.launcher.inputEntry = inputs.answer;
        bench.http.answer.status = 200;
        bench.http.answer.body = "a page";
        bench.platform.javaScript().answer = {true, u"42"_s};
        auto &windows = bench.platform.windows();
        windows.foregroundWindow = windows.windowUnderPointer = 7;
        windows.rectangles[7] = {100, 50, 200, 100};
        auto &screen = bench.platform.screen();
        screen.size = screenSize;
        screen.pixels.assign(std::size_t(screenSize.width()) * std::size_t(screenSize.height()), 0x808080);
        for (int index = 0; index < m_script.size(); ++index) {
            if (const auto line = edition1::ScriptLine::read(m_script[index], index + 1))
                provide(bench, *line, index);
        }
    }

private:
    void copyFiles() const
    {
        QDir(m_disk).removeRecursively();
        QDir().mkpath(scriptFolder(m_disk));
        if (m_folder.isEmpty())
            return;
        int left = mostFiles;
        for (const QFileInfo &file : QDir(m_folder).entryInfoList(QDir::Files | QDir::NoSymLinks)) {
            if (file.size() <= largestFile && left-- > 0)
                QFile::copy(file.filePath(), scriptFolder(m_disk) + u'/' + file.fileName());
        }
    }

    // What the line looks for is there.
    void provide(ScriptBench &bench, const edition1::ScriptLine &line, int index)
    {
        const QStringList texts = textsOf(line);
        const QString first = texts.value(0);
        const QString command = line.command.toLower();
        auto &screen = bench.platform.screen();
        if (line.nameSpace == "os"_L1 && command == "find_color"_L1) {
            bool isColour = false;
            const uint colour = first.toUInt(&isColour, 16);
            if (isColour)
                screen.pixels[std::size_t(20 + index % 200) * std::size_t(screenSize.width()) + 10] = colour;
        } else if (line.nameSpace == "os"_L1 && command == "find_pic"_L1) {
            paint(screen, bench.platform.paths().toSystem(onDisk(first)));
        } else if (line.nameSpace == "os"_L1 && line.command == u"窗口最小化" && line.arguments) {
            bench.platform.windows().titles[line.arguments->text] = 9;
        } else if (line.nameSpace == "file"_L1 && command == "save"_L1) {
            QDir().mkpath(QFileInfo(bench.platform.paths().toSystem(onDisk(first))).path());
        } else if ((line.nameSpace == "file"_L1 && (command == "read"_L1 || command == "call_js"_L1))
            || (line.nameSpace == "net"_L1 && command == "upload"_L1)) {
            const QString path
                = bench.platform.paths().toSystem(onDisk(command == "upload"_L1 ? texts.value(1) : first));
            if (!first.isEmpty() && !QFileInfo::exists(path))
                write(path, "one\r\ntwo\r\nthree\r\n");
        }
    }

    static void paint(recording::RecordingScreen &screen, const QString &path)
    {
        const QImage picture = QImage(path).convertToFormat(QImage::Format_RGB32);
        const QRect all({}, screenSize);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (const QPoint at = pictureAt + QPoint(x, y); all.contains(at))
                    screen.pixels[std::size_t(at.y() * screenSize.width() + at.x())]
                        = picture.pixel(x, y) & 0xffffff;
            }
        }
    }

    QString onDisk(QString path) const
    {
        return path.replace(u"_pfold_"_s, scriptFolder(m_disk)).replace(u"_ppfold_"_s, m_disk);
    }

    QStringList m_script;
    QString m_folder;
    QString m_disk;
};

// Both stand at the same path of the same disk, one after the other.
Outcome outcomeOf(const QStringList &script, Place &place, const Inputs &inputs, const QString &disk)
{
    ScriptBench bench;
    place.fill(bench, inputs);
    const QString path = scriptFolder(disk) + u"/main.wf"_s;
    write(path, script.join(u"\r\n"_s).toUtf8());
    int waits = 0;
    bench.waiter.onWait = [&] {
        if (++waits > mostWaits || bench.waiter.elapsed > longestRun)
            throw Endless{};
    };
    Outcome outcome;
    const auto run = [&](const std::function<void()> &lines) {
        try {
            lines();
        } catch (const RunTimeError &error) {
            outcome.end = Difference{
                error.line() ? std::optional(*error.line() + 1) : std::nullopt, error.description()};
        } catch (const ScriptError &error) {
            const ScriptMistake &mistake = error.mistakes().first();
            outcome.end = Difference{mistake.line, mistake.reason};
        } catch (const Endless &) {
            outcome.end = Difference{{}, u"it does not come to an end"_s};
        }
    };
    const bool isLater = askedEdition(script.join(u'\n').toUtf8()).number > 1;
    RunStart &starts = bench.system.starts();
    if (!starts.prepareFile(path)) {
        outcome.end = Difference{1, u"it cannot be read"_s};
        return outcome;
    }
    run([&] { starts.runAll(); });
    for (int answers = 0; !outcome.end && answers < mostAnswers; ++answers) {
        const QString last = bench.events().isEmpty() ? QString() : bench.events().last();
        const bool isQuestion = last.startsWith("input "_L1);
        if (!isQuestion && !last.startsWith("tip "_L1))
            break;
        const QString variable = isQuestion ? last.section(u'|', -1) : QString();
        if (isLater) {
            run([&] { starts.answer(onlyRun, {isQuestion, variable, inputs.answer}); });
            continue;
        }
        if (isQuestion)
            bench.state.vardict.SetVar(variable, inputs.answer);
        run([&] { starts.resume(); });
    }
    QFile::remove(path);
    outcome.events = bench.events();
    outcome.events.removeAll(pause);
    outcome.events.removeAll(endOfProcess);
    outcome.files = filesBelow(disk);
    return outcome;
}

std::optional<Difference> differenceOf(const Outcome &one, const Outcome &two)
{
    if (two.end)
        return Difference{two.end->line, u"edition 2 ends there: %1"_s.arg(two.end->reason)};
    for (qsizetype index = 0; index < std::max(one.events.size(), two.events.size()); ++index) {
        const QString before = one.events.value(index, u"nothing"_s);
        const QString after = two.events.value(index, u"nothing"_s);
        if (before != after)
            return Difference{{}, u"edition 1 does \"%1\", and edition 2 \"%2\""_s.arg(before, after)};
    }
    if (one.files != two.files)
        return Difference{{}, u"it leaves other files behind"_s};
    return {};
}

// Whether the first `count` lines leave no block open.
bool isWhole(const QStringList &edition2, qsizetype count)
{
    int open = 0;
    for (const QString &line : edition2.first(count))
        open += line.startsWith("repeat.times"_L1) ? 1 : line == "repeat.end"_L1 ? -1 : 0;
    return open == 0;
}

} // namespace

std::optional<Difference> differenceBetween(
    const QStringList &edition1, const QStringList &edition2, const QString &folder)
{
    const QTemporaryDir temporary;
    const QString disk = temporary.filePath(u"disk"_s);
    Place place(edition1, folder, disk);
    const auto compare = [&](const QStringList &one, const QStringList &two, const Inputs &inputs) {
        return differenceOf(outcomeOf(one, place, inputs, disk), outcomeOf(two, place, inputs, disk));
    };

    std::optional<Difference> ending;
    bool isCompared = false;
    for (const Inputs &inputs : allInputs) {
        const Outcome before = outcomeOf(edition1, place, inputs, disk);
        if (before.end) {
            ending = before.end;
            continue;
        }
        isCompared = true;
        auto difference = differenceOf(before, outcomeOf(edition2, place, inputs, disk));
        if (!difference)
            continue;
        // The line that differs is the last of the shortest beginning that does.
        const qsizetype more = edition2.size() - edition1.size();
        for (qsizetype count = 1; !difference->line && count <= edition1.size(); ++count) {
            if (isWhole(edition2, count + more)
                && compare(edition1.first(count), edition2.first(count + more), inputs))
                difference->line = static_cast<int>(count + more);
        }
        return difference;
    }
    if (!isCompared) {
        const int more = static_cast<int>(edition2.size() - edition1.size());
        return Difference{ending->line ? std::optional(*ending->line + more) : std::nullopt,
            u"edition 1 does not get through, so nothing can be compared: %1"_s.arg(ending->reason)};
    }
    return {};
}

} // namespace plum::upgrade
