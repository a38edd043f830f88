#include "kit/option_rows.h"

#include "kit/run_options.h"

#include <algorithm>
#include <cstdio>

namespace plum::kit {

using namespace Qt::StringLiterals;

FileAndHelp readOptions(const QStringList &arguments, const std::vector<OptionRow> &rows, QString &problem)
{
    FileAndHelp read;
    for (qsizetype index = 0; index < arguments.size() && problem.isEmpty(); ++index) {
        const QString &argument = arguments[index];
        const auto row = std::ranges::find(rows, argument, &OptionRow::name);
        if (argument == "--help"_L1)
            read.wantsHelp = true;
        else if (row != rows.end() && row->hasValue && index + 1 == arguments.size())
            problem = u"%1 needs a value"_s.arg(argument);
        else if (row != rows.end())
            problem = row->take(row->hasValue ? arguments[++index] : QString());
        else if (argument.startsWith(u'-') && argument.size() > 1)
            problem = u"there is no option %1"_s.arg(argument);
        else if (!read.file.isEmpty())
            problem = u"one file at a time, not also %1"_s.arg(argument);
        else
            read.file = argument;
    }
    if (problem.isEmpty() && !read.wantsHelp && read.file.isEmpty())
        problem = u"which file?"_s;
    return read;
}

int refuse(const QString &problem, const char *help)
{
    std::fprintf(stderr, "plumkit: %s\n\n%s", qUtf8Printable(problem), help);
    return Unusable;
}

} // namespace plum::kit
