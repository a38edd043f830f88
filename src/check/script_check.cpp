#include "check/script_check.h"

#include "check/edition1/edition1_check.h"
#include "check/edition2/edition2_check.h"
#include "check/findings/app_files.h"
#include "check/script_text.h"
#include "check/suppressions.h"

namespace plum {

using namespace Qt::StringLiterals;

Findings ScriptCheck::check(QByteArrayView script, const QString &folder) const
{
    return examine(script, folder).findings;
}

ScriptCheck::Examined ScriptCheck::examine(QByteArrayView script, const QString &folder) const
{
    const ScriptText text = ScriptText::read(script);
    Report report;
    report.add(text.findings);
    readSuppressions(text.lines, report);
    const AppFiles files(folder);
    const int edition = text.edition.number;
    if (edition == 1)
        edition1::check(text.lines, m_vocabulary, files, report);
    else if (edition == 2)
        edition2::check(text.text, m_vocabulary, files, report);
    else
        report.add(text.edition.line, 1, u"edition",
            u"This Plum knows the editions 1 and 2 of the language, not %1."_s.arg(edition));
    if (edition == 1 && report.hasMoreThanHints())
        report.add(1, 1, u"old-edition",
            u"In edition 2 of the language (//edition:2) mistakes are told before a script runs."_s);
    return {report.sorted(), report.names()};
}

} // namespace plum
