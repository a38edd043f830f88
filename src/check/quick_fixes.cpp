#include "check/quick_fixes.h"

#include "check/findings/check_words.h"
#include "check/findings/nearest_word.h"
#include "check/script_layout.h"

#include <QRegularExpression>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QChar quote = u'"';

// The argument that begins at a finding's place, up to the comma behind it.
struct Piece
{
    qsizetype start = 0;
    QString text; // without blanks behind it
};

Piece pieceAt(const QString &line, int column)
{
    const qsizetype start = std::clamp<qsizetype>(column - 1, 0, line.size());
    bool isQuoted = false;
    qsizetype end = start;
    for (; end < line.size() && (isQuoted || line[end] != u','); ++end)
        isQuoted ^= line[end] == quote;
    QString text = line.sliced(start, end - start);
    while (text.endsWith(u' '))
        text.chop(1);
    return {start, text};
}

QString replaced(const QString &line, const Piece &piece, const QString &with)
{
    return line.first(piece.start) + with + line.sliced(piece.start + piece.text.size());
}

// The word of letters, digits, "_" that begins at a place, or that the quotes there hold.
Piece wordAt(const QString &line, int column)
{
    static const QRegularExpression word(u"[\"$]*([\\p{L}\\p{N}_]+)"_s);
    const QRegularExpressionMatch match = word.match(line, std::clamp<qsizetype>(column - 1, 0, line.size()),
        QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption);
    return {match.capturedStart(1), match.captured(1)};
}

// Every comma between quotes as `_,_`.
QString withEscapedCommas(const QString &line)
{
    QString escaped;
    bool isQuoted = false;
    for (qsizetype at = 0; at < line.size(); ++at) {
        isQuoted ^= line[at] == quote;
        const bool isEscape = QStringView(line).sliced(at).startsWith(u"_,_");
        escaped += isEscape ? u"_,_"_s : isQuoted && line[at] == u',' ? u"_,_"_s : QString(line[at]);
        at += isEscape ? 2 : 0;
    }
    return escaped;
}

QString withoutOuterBlanks(const QString &line)
{
    static const QRegularExpression blanks(u" *(\"[^\"]*\") *(?=,|\\z)"_s);
    const qsizetype head = line.indexOf(u' ') + 1;
    QString rest = line.sliced(head);
    return line.first(head) + rest.replace(blanks, u"\\1"_s);
}

qsizetype faultsIn(const Findings &findings)
{
    return std::ranges::count_if(findings, [](const Finding &f) { return f.severity != Severity::Hint; });
}

} // namespace

// A word of the language that is near the one at the finding, or a variable's name.
QList<QuickFix> QuickFixes::nearWords(const Finding &finding, const QStringList &lines, Edition edition) const
{
    const QString line = lines.value(finding.line - 1);
    const Piece found = wordAt(line, finding.column);
    if (found.text.isEmpty())
        return {};
    QStringList known;
    for (const ScriptWords::Suggestion &suggestion :
        m_words.suggestions(lines, line.first(found.start), edition)) {
        QString text = suggestion.text;
        text.remove(quote);
        known += text;
    }
    // A reference by its prefix and its name.
    Piece whole = found;
    static const QRegularExpression reference(u"[\\p{L}\\p{N}_]+\\.[\\p{L}\\p{N}_]+"_s);
    const auto match = reference.match(
        line, found.start, QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption);
    if (match.hasMatch() && line.indexOf(u' ') >= 0 && found.start > line.trimmed().indexOf(u' '))
        whole.text = match.captured();
    QList<QuickFix> fixes;
    for (const Piece &word : {whole, found}) {
        QStringList others = known;
        others.removeAll(word.text);
        const QString near = nearestWord(word.text, others);
        if (!near.isEmpty())
            fixes += {CheckWords::tr("Write %1").arg(near), finding.line, replaced(line, word, near)};
    }
    return fixes;
}

QList<QuickFix> QuickFixes::candidates(
    const Finding &finding, const QString &script, const QStringList &lines, Edition edition) const
{
    if (finding.rule.endsWith(u"line-ends"_s))
        return {{CheckWords::tr("Convert all line ends to CR LF"), 0, laidOut(script, Edition::One)}};
    const QString line = lines.value(finding.line - 1);
    const Piece piece = pieceAt(line, finding.column);
    QList<QuickFix> fixes = nearWords(finding, lines, edition);
    const auto add = [&](const QString &title, const QString &text) {
        if (text != line)
            fixes += {title, finding.line, text};
    };
    if (line.startsWith(u' ') && edition == Edition::One)
        add(CheckWords::tr("Remove the blanks in front"),
            QString(line).remove(QRegularExpression(u"\\A +"_s)));
    if (!piece.text.isEmpty() && !piece.text.contains(quote))
        add(CheckWords::tr("Write it in quotes"), replaced(line, piece, quote + piece.text + quote));
    if (piece.text.isEmpty())
        add(CheckWords::tr("Write \"\" for an empty text"), replaced(line, piece, u"\"\""_s));
    if (edition == Edition::One) {
        add(CheckWords::tr("Write commas in texts as _,_"), withEscapedCommas(line));
        add(CheckWords::tr("Remove the blanks beside the quotes"), withoutOuterBlanks(line));
        if (piece.text.contains("+("_L1))
            add(CheckWords::tr("Close the list of names"), replaced(line, piece, piece.text + u')'));
    }
    if (piece.text.size() > 2 && piece.text.startsWith(quote) && piece.text.endsWith(quote))
        add(CheckWords::tr("Remove the quotes"),
            replaced(line, piece, piece.text.sliced(1, piece.text.size() - 2)));
    if (piece.text.count(quote) % 2 == 1)
        add(CheckWords::tr("Close the quotes"), replaced(line, piece, piece.text + quote));
    return fixes;
}

QList<QuickFix> QuickFixes::of(const Finding &finding, const Findings &findings, const QString &script,
    const QStringList &lines, Edition edition, const QString &folder) const
{
    const QString lineEnd = edition == Edition::One ? u"\r\n"_s : u"\n"_s;
    const auto isMended = [&](const QuickFix &fix) {
        QStringList changed = lines;
        if (fix.line > 0)
            changed[fix.line - 1] = fix.text;
        const Findings left
            = m_check.check((fix.line > 0 ? changed.join(lineEnd) : fix.text).toUtf8(), folder);
        const bool isThere = std::ranges::any_of(left, [&](const Finding &other) {
            return other.line == finding.line && other.rule == finding.rule
                && other.message == finding.message;
        });
        // A file whose lines had run together may have any mistakes once they are apart.
        return !isThere
            && (fix.line == 0 || (left.size() < findings.size() && faultsIn(left) <= faultsIn(findings)));
    };
    QList<QuickFix> fixes;
    for (const QuickFix &candidate : candidates(finding, script, lines, edition)) {
        if (isMended(candidate)
            && std::ranges::none_of(fixes, [&](const QuickFix &fix) { return fix.text == candidate.text; }))
            fixes += candidate;
    }
    if (finding.severity != Severity::Error && finding.line <= lines.size()) {
        const QString &line = lines[finding.line - 1];
        const qsizetype blanks = edition == Edition::One
            ? 0
            : std::ranges::find_if(line, [](QChar c) { return !c.isSpace(); }) - line.begin();
        fixes += {CheckWords::tr("Say nothing of %1 here").arg(finding.rule), finding.line,
            line.first(blanks) + u"//check:off "_s + finding.rule + lineEnd + line, true};
    }
    return fixes;
}

} // namespace plum
