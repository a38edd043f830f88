#pragma once

#include "check/findings/finding.h"
#include "check/findings/line_transcript.h"
#include "check/findings/name_use.h"

namespace plum {

// Collects what is found in one script: what is wrong, and where it names variables.
class Report
{
public:
    // With the rule's own severity.
    void add(int line, int column, QStringView rule, const QString &message);
    void add(int line, int column, QStringView rule, Severity severity, const QString &message);
    void add(const Findings &findings) { m_findings += findings; }

    // By place, each once; suppressed ones are left out.
    Findings sorted() const;

    // Whether something may be wrong: a warning or an error that is not suppressed.
    bool hasMoreThanHints() const;

    // `rule` is not looked at in `line`.
    void suppress(int line, const QString &rule);

    // Where names stand, for those who look for them. Each scope has variables of its own.
    int beginScope() { return m_names.scopes++; }
    void addName(const NameUse &use);
    // A part's name.
    void addPart(const QString &name, int line, int column, bool isSet);
    // Some line names its variable by a value.
    void addUnknownName();
    const NameUses &names() const { return m_names; }

    // The line that is being judged depends on a file, which is as `asked` says; nothing: on one that is not
    // there.
    void askedFile(const std::optional<LineTranscript::AskedFile> &asked);

    // From here on everything is written into the transcript of one line, too; null: no more.
    void record(LineTranscript *transcript) { m_transcript = transcript; }
    void repeat(const LineTranscript &transcript, int line);

private:
    bool isSuppressed(const Finding &finding) const;

    Findings m_findings;
    LineTranscript *m_transcript = nullptr;
    NameUses m_names;
    QList<std::pair<int, QString>> m_suppressed;
};

// A reason as a sentence: with a capital letter and a full stop.
QString asSentence(const QString &reason);

} // namespace plum
