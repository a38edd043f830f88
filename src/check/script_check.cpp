#include "check/script_check.h"

#include "check/edition1/edition1_check.h"
#include "check/edition2/edition2_check.h"
#include "check/findings/app_files.h"
#include "check/findings/check_words.h"
#include "check/script_text.h"
#include "check/suppressions.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Names are never forgotten otherwise, and somebody who types a name makes many.
constexpr int mostNames = 100'000;

} // namespace

struct ScriptMemory::Known
{
    int edition = 0;
    QString folder;
    NameTable names;
    LineMemory<edition1::LineRecord> edition1;
    LineMemory<edition2::LineRecord> edition2;
};

ScriptMemory::ScriptMemory()
    : m_known(std::make_unique<Known>())
{
}

ScriptMemory::~ScriptMemory() = default;

Findings ScriptCheck::check(QByteArrayView script, const QString &folder) const
{
    return examine(script, folder).findings;
}

ScriptCheck::Examined ScriptCheck::examine(QByteArrayView script, const QString &folder) const
{
    ScriptMemory memory;
    return examine(script, folder, memory);
}

ScriptCheck::Examined ScriptCheck::examine(
    QByteArrayView script, const QString &folder, ScriptMemory &memory) const
{
    const ScriptText text = ScriptText::read(script);
    Report report;
    report.add(text.findings);
    readSuppressions(text.lines, report);
    const AppFiles files(folder);
    const int edition = text.edition.number;
    if (memory.m_known->edition != edition || memory.m_known->folder != folder
        || memory.m_known->names.count() > mostNames) {
        memory.m_known = std::make_unique<ScriptMemory::Known>();
        memory.m_known->edition = edition;
        memory.m_known->folder = folder;
    }
    ScriptMemory::Known &known = *memory.m_known;
    if (edition == 1)
        edition1::check(text.lines, m_vocabulary, files, known.names, known.edition1, report);
    else if (edition == 2)
        edition2::check(text.lines, m_vocabulary, files, known.names, known.edition2, report);
    else
        report.add(text.edition.line, 1, u"edition",
            CheckWords::tr("This Plum knows the editions 1 and 2 of the language, not %1.").arg(edition));
    if (edition == 1 && report.hasMoreThanHints())
        report.add(1, 1, u"old-edition",
            CheckWords::tr(
                "In edition 2 of the language (//edition:2) mistakes are told before a script runs."));
    return {report.sorted(), report.names()};
}

} // namespace plum
