#include "kit/run_options.h"

#include "engine/edition2/line_reader.h"

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

constexpr double longestTimeout = 1'000'000; // seconds

void readSetting(const QString &setting, QList<std::pair<QString, QString>> &variables, QString &problem)
{
    const qsizetype equals = setting.indexOf(u'=');
    if (equals > 0 && edition2::isName(QStringView(setting).first(equals)))
        variables += {setting.first(equals), setting.sliced(equals + 1)};
    else
        problem = u"--set takes name=value, not \"%1\""_s.arg(setting);
}

} // namespace

RunOptions readRunOptions(const QStringList &arguments, QString &problem)
{
    RunOptions options;
    for (qsizetype index = 0; index < arguments.size() && problem.isEmpty(); ++index) {
        const QString &argument = arguments[index];
        const bool takesValue = QStringList{u"--timeout"_s, u"--set"_s, u"--trace"_s}.contains(argument);
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
            readSetting(arguments[++index], options.variables, problem);
        } else if (argument == "--trace"_L1) {
            options.trace = arguments[++index];
        } else if (argument == "--secrets"_L1) {
            options.tracesSecrets = true;
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

DryOptions readDryOptions(const QStringList &arguments, QString &problem)
{
    DryOptions options;
    const QStringList withValue{u"--set"_s, u"--answer"_s, u"--typed"_s, u"--events"_s};
    for (qsizetype index = 0; index < arguments.size() && problem.isEmpty(); ++index) {
        const QString &argument = arguments[index];
        if (argument == "--help"_L1) {
            options.wantsHelp = true;
        } else if (withValue.contains(argument) && index + 1 == arguments.size()) {
            problem = u"%1 needs a value"_s.arg(argument);
        } else if (argument == "--set"_L1) {
            readSetting(arguments[++index], options.variables, problem);
        } else if (argument == "--answer"_L1) {
            options.answers += arguments[++index];
        } else if (argument == "--typed"_L1) {
            options.typed = arguments[++index];
        } else if (argument == "--events"_L1) {
            options.mostEvents = arguments[++index].toInt();
            if (options.mostEvents <= 0)
                problem = u"--events takes a whole number above 0, not \"%1\""_s.arg(arguments[index]);
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
