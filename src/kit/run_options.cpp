#include "kit/run_options.h"

#include "engine/edition2/line_reader.h"

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

constexpr double longestTimeout = 1'000'000; // seconds

} // namespace

RunOptions readRunOptions(const QStringList &arguments, QString &problem)
{
    RunOptions options;
    for (qsizetype index = 0; index < arguments.size() && problem.isEmpty(); ++index) {
        const QString &argument = arguments[index];
        const bool takesValue = argument == "--timeout"_L1 || argument == "--set"_L1;
        if (argument == "--help"_L1) {
            options.wantsHelp = true;
        } else if (takesValue && index + 1 == arguments.size()) {
            problem = u"%1 needs a value"_s.arg(argument);
        } else if (argument == "--timeout"_L1) {
            bool isNumber = false;
            const double seconds = arguments[++index].toDouble(&isNumber);
            if (isNumber && seconds > 0 && seconds <= longestTimeout)
                options.timeout = seconds;
            else
                problem = u"--timeout takes a number of seconds, not \"%1\""_s.arg(arguments[index]);
        } else if (argument == "--set"_L1) {
            const QString &setting = arguments[++index];
            const qsizetype equals = setting.indexOf(u'=');
            if (equals > 0 && edition2::isName(QStringView(setting).first(equals)))
                options.variables += {setting.first(equals), setting.sliced(equals + 1)};
            else
                problem = u"--set takes name=value, not \"%1\""_s.arg(setting);
        } else if (argument.startsWith(u'-') && argument.size() > 1) {
            problem = u"there is no option %1"_s.arg(argument);
        } else if (!options.file.isEmpty()) {
            problem = u"one file at a time, not also %1"_s.arg(argument);
        } else {
            options.file = argument;
        }
    }
    if (problem.isEmpty() && !options.wantsHelp && options.file.isEmpty())
        problem = u"which file?"_s;
    return options;
}

} // namespace plum::kit
