#include "check/findings/literal_rules.h"

#include "check/findings/check_words.h"

#include <QRegularExpression>

namespace plum {

using namespace Qt::StringLiterals;

void judgePlace(Report &report, int line, int column, const QString &text)
{
    static const QRegularExpression ofWindows(u"\\A[A-Za-z]:[\\\\/]"_s);
    static const QRegularExpression ofLinux(u"\\A/(?:usr|opt|etc|tmp|var|mnt|media|root)/"_s);
    if (text.startsWith("/home/"_L1) || text.contains("\\Users\\"_L1, Qt::CaseInsensitive))
        report.add(line, column, u"one-machine",
            CheckWords::tr("This path names one person's folder; _pfold_ stands for the app's own."));
    else if (ofWindows.match(text).hasMatch())
        report.add(line, column, u"one-system", CheckWords::tr("This path exists on Windows alone."));
    else if (ofLinux.match(text).hasMatch())
        report.add(line, column, u"one-system", CheckWords::tr("This path exists on Linux alone."));
    else if (text.endsWith(".exe"_L1, Qt::CaseInsensitive))
        report.add(line, column, u"one-system", CheckWords::tr("Programs end in .exe on Windows alone."));
}

void judgeSecret(Report &report, int line, int column, const QString &variable, const QString &text)
{
    static const QRegularExpression secretName(
        u"(?:pass(?:word|wd)?|pwd|secret|token|api_?key)$"_s, QRegularExpression::CaseInsensitiveOption);
    if (!text.isEmpty() && secretName.match(variable).hasMatch())
        report.add(line, column, u"secret",
            CheckWords::tr("Whoever gets this app can read what \"%1\" holds; ask for it instead.")
                .arg(variable));
}

} // namespace plum
