#include "check/suppressions.h"

#include "check/findings/check_rules.h"
#include "check/findings/check_words.h"
#include "check/findings/nearest_word.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView switchedOff("//check:off");

QStringList ruleIds()
{
    QStringList ids;
    for (const CheckRule &rule : checkRules())
        ids += rule.id.toString();
    return ids;
}

} // namespace

void readSuppressions(const QStringList &lines, Report &report)
{
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QStringView line = QStringView(lines[i]).trimmed();
        if (!line.startsWith(switchedOff))
            continue;
        const int number = static_cast<int>(i + 1);
        const QStringList rules = line.sliced(switchedOff.size()).toString().split(u' ', Qt::SkipEmptyParts);
        if (rules.isEmpty())
            report.add(number, 1, u"suppression",
                CheckWords::tr("Name the rule that is switched off for the next line."));
        for (const QString &rule : rules) {
            if (checkRule(rule))
                report.suppress(number + 1, rule);
            else
                report.add(number, 1, u"suppression",
                    CheckWords::tr("There is no rule \"%1\".%2").arg(rule, didYouMean(rule, ruleIds())));
        }
    }
}

} // namespace plum
