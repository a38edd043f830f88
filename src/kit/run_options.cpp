#include "kit/run_options.h"

#include "engine/edition2/line_reader.h"
#include "kit/option_rows.h"

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

constexpr double longestTimeout = 1'000'000; // seconds

OptionRow settingRow(QList<std::pair<QString, QString>> &variables)
{
    return {.name = u"--set"_s, .take = [&variables](const QString &setting) {
                const qsizetype equals = setting.indexOf(u'=');
                if (equals <= 0 || !edition2::isName(QStringView(setting).first(equals)))
                    return u"--set takes name=value, not \"%1\""_s.arg(setting);
                variables += {setting.first(equals), setting.sliced(equals + 1)};
                return QString();
            }};
}

// Takes a text as it is.
OptionRow textRow(const QString &name, QString &text)
{
    return {.name = name, .take = [&text](const QString &value) {
                text = value;
                return QString();
            }};
}

OptionRow flagRow(const QString &name, bool &flag)
{
    return {.name = name, .hasValue = false, .take = [&flag](const QString &) {
                flag = true;
                return QString();
            }};
}

} // namespace

RunOptions readRunOptions(const QStringList &arguments, QString &problem)
{
    RunOptions options;
    const auto takeTimeout = [&](const QString &value) {
        bool isNumber = false;
        const double seconds = value.toDouble(&isNumber);
        const bool isInRange = seconds > 0 && seconds <= longestTimeout; // "nan" is not
        if (!isNumber || !isInRange)
            return u"--timeout takes a number of seconds, not \"%1\""_s.arg(value);
        options.timeout = seconds;
        return QString();
    };
    const FileAndHelp read = readOptions(arguments,
        {{.name = u"--timeout"_s, .take = takeTimeout}, settingRow(options.variables),
            textRow(u"--trace"_s, options.trace), flagRow(u"--secrets"_s, options.tracesSecrets),
            flagRow(u"--scoped"_s, options.isScoped), flagRow(u"--pictures"_s, options.takesPictures)},
        problem);
    options.file = read.file;
    options.wantsHelp = read.wantsHelp;
    return options;
}

DryOptions readDryOptions(const QStringList &arguments, QString &problem)
{
    DryOptions options;
    const auto takeAnswer = [&](const QString &value) {
        options.answers += value;
        return QString();
    };
    const auto takeEvents = [&](const QString &value) {
        options.mostEvents = value.toInt();
        return options.mostEvents > 0 ? QString()
                                      : u"--events takes a whole number above 0, not \"%1\""_s.arg(value);
    };
    const FileAndHelp read = readOptions(arguments,
        {settingRow(options.variables), {.name = u"--answer"_s, .take = takeAnswer},
            textRow(u"--typed"_s, options.typed), textRow(u"--replay"_s, options.record),
            flagRow(u"--net"_s, options.allowsNetwork), {.name = u"--events"_s, .take = takeEvents}},
        problem);
    options.file = read.file;
    options.wantsHelp = read.wantsHelp;
    return options;
}

} // namespace plum::kit
