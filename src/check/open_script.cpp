#include "check/open_script.h"

#include "engine/editions/later_edition.h"

#include <algorithm>

namespace plum {

namespace {

// The last of the starts that is not behind an offset.
int lineAt(const QList<qsizetype> &starts, qsizetype offset)
{
    return static_cast<int>(std::ranges::upper_bound(starts, offset) - starts.begin()) - 1;
}

} // namespace

OpenScript::OpenScript(const QString &folder, const QString &text)
    : m_folder(folder)
    , m_text(text)
{
    readLines();
}

void OpenScript::replace(EditorPlace from, EditorPlace to, const QString &with)
{
    const qsizetype start = offsetOf(from);
    const qsizetype end = std::max(offsetOf(to), start);
    m_text.replace(start, end - start, with);
    readLines();
}

void OpenScript::replaceAll(const QString &with)
{
    m_text = with;
    readLines();
}

void OpenScript::examine(const ScriptCheck &check)
{
    if (!m_memory)
        m_memory = std::make_shared<ScriptMemory>();
    m_examined = check.examine(m_text.toUtf8(), m_folder, *m_memory);
}

// One pass over the text: it is made anew with every key that somebody presses.
void OpenScript::readLines()
{
    // A script asks for its edition in its first two lines.
    const qsizetype asking = m_text.indexOf(u'\n', m_text.indexOf(u'\n') + 1);
    m_edition = askedEdition((asking < 0 ? m_text : m_text.first(asking)).toUtf8()).number == 1
        ? Edition::One
        : Edition::Two;
    m_lines.clear();
    m_starts = {0};
    m_editorStarts = {0};
    qsizetype start = 0;
    const auto endLine = [&](qsizetype end, qsizetype next) {
        m_lines += m_text.sliced(start, end - start);
        m_starts += next;
        start = next;
    };
    for (qsizetype at = 0; at < m_text.size(); ++at) {
        const QChar c = m_text[at];
        if (c != u'\n' && c != u'\r')
            continue;
        const bool isPair = c == u'\r' && at + 1 < m_text.size() && m_text[at + 1] == u'\n';
        const qsizetype next = at + (isPair ? 2 : 1);
        m_editorStarts += next;
        // A bare LF ends no line in edition 1, a bare CR none in edition 2.
        if (isPair || (c == u'\r') == (m_edition == Edition::One))
            endLine(at, next);
        at = next - 1;
    }
    m_lines += m_text.sliced(start);
}

QString OpenScript::editorLine(int line) const
{
    if (line < 0 || line >= m_editorStarts.size())
        return {};
    return m_text.sliced(m_editorStarts[line], endOfEditorLine(line) - m_editorStarts[line]);
}

QString OpenScript::lineEnd(int line) const
{
    if (line < 0 || line + 1 >= m_editorStarts.size())
        return {};
    const qsizetype end = endOfEditorLine(line);
    return m_text.sliced(end, m_editorStarts[line + 1] - end);
}

EditorPlace OpenScript::toEditor(int line, int column) const
{
    const qsizetype index = std::clamp<qsizetype>(line - 1, 0, m_lines.size() - 1);
    const qsizetype inLine = std::clamp<qsizetype>(column - 1, 0, m_lines[index].size());
    const qsizetype offset = m_starts[index] + inLine;
    const int editorLine = lineAt(m_editorStarts, offset);
    return {editorLine, static_cast<int>(offset - m_editorStarts[editorLine])};
}

OpenScript::ScriptPlace OpenScript::fromEditor(EditorPlace place) const
{
    const qsizetype offset = offsetOf(place);
    const int line = lineAt(m_starts, offset);
    return {line + 1, static_cast<int>(offset - m_starts[line]) + 1};
}

OpenScript::EditorRange OpenScript::rangeOf(const Finding &finding) const
{
    const EditorPlace from = toEditor(finding.line, finding.column);
    const QString line = editorLine(from.line);
    const qsizetype comma = line.indexOf(u',', from.character);
    return {from, {from.line, static_cast<int>(comma < 0 ? line.size() : comma)}};
}

qsizetype OpenScript::endOfEditorLine(int line) const
{
    if (line + 1 >= m_editorStarts.size())
        return m_text.size();
    qsizetype end = m_editorStarts[line + 1] - 1;
    if (m_text[end] == u'\n' && end > m_editorStarts[line] && m_text[end - 1] == u'\r')
        --end;
    return end;
}

qsizetype OpenScript::offsetOf(EditorPlace place) const
{
    if (place.line < 0)
        return 0;
    if (place.line >= m_editorStarts.size())
        return m_text.size();
    const qsizetype start = m_editorStarts[place.line];
    return std::clamp<qsizetype>(start + place.character, start, endOfEditorLine(place.line));
}

} // namespace plum
