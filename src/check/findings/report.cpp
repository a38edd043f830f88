#include "check/findings/report.h"

#include "check/findings/check_rules.h"
#include "check/findings/check_words.h"

#include <algorithm>
#include <tuple>

namespace plum {

void Report::add(int line, int column, QStringView rule, const QString &message)
{
    const CheckRule *known = checkRule(rule);
    add(line, column, rule, known ? known->severity : Severity::Warning, message);
}

void Report::add(int line, int column, QStringView rule, Severity severity, const QString &message)
{
    m_findings += {
        .line = line, .column = column, .severity = severity, .rule = rule.toString(), .message = message};
    if (m_transcript)
        m_transcript->said.push_back({column, m_findings.back().rule, severity, message});
}

void Report::addName(const NameUse &use)
{
    m_names.uses += use;
}

void Report::addPart(const QString &name, int line, int column, bool isSet)
{
    addName({NameUse::partScope, name, line, column, isSet});
    if (m_transcript)
        m_transcript->partUses.push_back({name, column, isSet});
}

void Report::addUnknownName()
{
    m_names.areAllKnown = false;
    if (m_transcript)
        m_transcript->namesUnknown = true;
}

void Report::askedFile(const std::optional<LineTranscript::AskedFile> &asked)
{
    if (!m_transcript)
        return;
    if (asked)
        m_transcript->askedFiles.push_back(*asked);
    else
        m_transcript->isKept = false;
}

void Report::repeat(const LineTranscript &transcript, int line)
{
    for (const LineTranscript::Said &said : transcript.said)
        m_findings += {.line = line,
            .column = said.column,
            .severity = said.severity,
            .rule = said.rule,
            .message = said.message};
    for (const LineTranscript::PartUse &use : transcript.partUses)
        addName({NameUse::partScope, use.name, line, use.column, use.isSet});
    if (transcript.namesUnknown)
        m_names.areAllKnown = false;
}

void Report::suppress(int line, const QString &rule)
{
    m_suppressed += {line, rule};
}

bool Report::isSuppressed(const Finding &finding) const
{
    return m_suppressed.contains(std::pair(finding.line, finding.rule));
}

bool Report::hasMoreThanHints() const
{
    return std::ranges::any_of(m_findings, [this](const Finding &finding) {
        return finding.severity != Severity::Hint && !isSuppressed(finding);
    });
}

Findings Report::sorted() const
{
    Findings found;
    for (const Finding &finding : m_findings) {
        if (!isSuppressed(finding))
            found += finding;
    }
    std::ranges::stable_sort(found, {}, [](const Finding &f) { return std::tuple(f.line, f.column); });
    const auto [rest, end] = std::ranges::unique(found);
    found.erase(rest, end);
    return found;
}

QString asSentence(const QString &reason)
{
    QString sentence = reason;
    if (!sentence.isEmpty())
        sentence[0] = sentence[0].toUpper();
    return sentence.endsWith(u'.') ? sentence : CheckWords::tr("%1.").arg(sentence);
}

} // namespace plum
