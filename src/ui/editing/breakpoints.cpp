#include "ui/editing/breakpoints.h"

#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace plum {

namespace {

QTextBlock lineOf(const QTextCursor &place)
{
    return place.document()->findBlock(place.selectionStart());
}

QTextCursor placeOf(const QTextBlock &line)
{
    QTextCursor place(line);
    place.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    return place;
}

} // namespace

QList<int> Breakpoints::lines() const
{
    QList<int> lines;
    for (const QTextCursor &place : m_places)
        lines += lineOf(place).blockNumber();
    std::ranges::sort(lines);
    const auto joined = std::ranges::unique(lines);
    lines.erase(joined.begin(), joined.end());
    return lines;
}

void Breakpoints::set(const QList<int> &lines)
{
    m_places.clear();
    for (const int line : lines) {
        if (const QTextBlock block = m_document.findBlockByNumber(line); block.isValid())
            m_places.push_back(placeOf(block));
    }
}

void Breakpoints::toggle(int line)
{
    QList<int> lines = this->lines();
    if (lines.removeAll(line) == 0)
        lines += line;
    set(lines);
}

// What was selected has gone with its line when nothing has come in its place, and no empty line is left.
void Breakpoints::noteChange(int added)
{
    std::erase_if(m_places, [added](const QTextCursor &place) {
        return !place.hasSelection() && added == 0 && lineOf(place).length() > 1;
    });
    for (QTextCursor &place : m_places)
        place = placeOf(lineOf(place));
}

} // namespace plum
