#include "kit/dry_command.h"

#include "flight/flight_data.h"
#include "flight/flight_log.h"
#include "kit/dry_run.h"
#include "kit/option_rows.h"
#include "platform/platform.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <memory>
#include <optional>
#include <utility>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

constexpr char dryUsage[]
    = R"(Says what a script would do, an event a line with the number of its line in front. Nothing is done: the
desktop is made up, requests and programs are only named, waits take no time, and files are changed in copies that
are thrown away.

  plumkit dry [options] FILE

  --set name=value    a variable that the script finds when it begins; may be given several times
  --answer TEXT       answers the next question; may be given several times
  --typed TEXT        what the user typed behind the keyword
  --net               asks servers, as the script does; downloads are only named all the same
  --replay PAGE       lays the run beside a recorded one, of which plumkit run --trace or "What happened?" has written
                      PAGE: the desktop is as it was then, and lines stand in the place of events, with ~ in front
                      where they differ, + where they are new, - where they are not carried out any more
  --events N          gives up after N events; 100000 if nothing is said
  --help              shows this text

Ends with status
  0    when the script came to its end
  1    with an error of the script; it stands on standard error as FILE:line:column: sentence
  2    when the options are unusable or FILE cannot be read
  124  when there were more events
  130  when a question had no answer
)";

std::optional<FlightLog> recordIn(const QString &path)
{
    QFile page(path);
    return page.open(QIODevice::ReadOnly) ? flightOfPage(page.readAll()) : std::nullopt;
}

} // namespace

int sayDry(int argc, char **argv, const QStringList &arguments)
{
    QString problem;
    const DryOptions options = readDryOptions(arguments, problem);
    if (!problem.isEmpty())
        return refuse(problem, dryUsage);
    if (options.wantsHelp) {
        std::fputs(dryUsage, stdout);
        return Done;
    }
    std::optional<FlightLog> record;
    if (!options.record.isEmpty()) {
        record = recordIn(options.record);
        if (!record)
            return refuse(u"%1 is no page of a run"_s.arg(options.record), dryUsage);
    }
    const QCoreApplication application(argc, argv);
    const QTemporaryDir scratch;
    if (!scratch.isValid())
        return refuse(u"there is no room for copies of files"_s, dryUsage);
    const std::unique_ptr<Platform> platform = createPlatform(QFile::decodeName(argv[0]));
    const auto printTo = [](std::FILE *stream) {
        return [stream](const QString &line) { std::fprintf(stream, "%s\n", qUtf8Printable(line)); };
    };
    return DryRun({platform->paths(), scratch.path(), std::move(record)}, printTo(stdout), printTo(stderr))
        .run(options);
}

} // namespace plum::kit
