#include "ui/editing/line_numbers.h"

#include "look/theme.h"
#include "ui/editing/script_editor.h"

#include <QPainter>
#include <QTextBlock>

#include <algorithm>

namespace plum {

namespace {

constexpr int fewestDigits = 2; // a script that grows does not push its text aside at once
constexpr int gap = 6; // pixels around the numbers
constexpr qreal markSize = 7;

// Of a shape of its own: a full circle, a triangle, a ring.
void drawMark(QPainter &painter, Severity severity, const QRectF &where, const Theme &theme)
{
    painter.setPen(Qt::NoPen);
    switch (severity) {
    case Severity::Error:
        painter.setBrush(theme.error);
        painter.drawEllipse(where);
        break;
    case Severity::Warning:
        painter.setBrush(theme.warning);
        painter.drawPolygon(
            QPolygonF({QPointF(where.center().x(), where.top()), where.bottomRight(), where.bottomLeft()}));
        break;
    case Severity::Hint:
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(theme.quiet, 1.5));
        painter.drawEllipse(where.adjusted(1, 1, -1, -1));
        break;
    }
}

} // namespace

LineNumbers::LineNumbers(ScriptEditor &editor)
    : QWidget(&editor)
    , m_editor(editor)
{
    setObjectName(QStringLiteral("lineNumbers"));
    // A press here would otherwise reach the panel below, which the window is dragged by.
    setAttribute(Qt::WA_NoMousePropagation);
}

int LineNumbers::neededWidth() const
{
    const auto digits = static_cast<int>(QString::number(m_editor.blockCount()).size());
    return m_editor.fontMetrics().horizontalAdvance(u'9') * std::max(digits, fewestDigits)
        + static_cast<int>(markSize) + 2 * gap;
}

void LineNumbers::paintEvent(QPaintEvent *event)
{
    const Theme &theme = m_editor.theme();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(m_editor.font());
    const int caretLine = m_editor.textCursor().blockNumber();
    for (const ScriptEditor::Row &row : m_editor.rows()) {
        if (row.top > event->rect().bottom() || row.top + row.height < event->rect().top())
            continue;
        painter.setPen(row.line == caretLine ? theme.text : theme.quiet);
        const QRectF place(0, row.top, width() - gap, row.height);
        painter.drawText(place, Qt::AlignRight | Qt::AlignTop, QString::number(row.line + 1));
        if (row.severity)
            drawMark(painter, *row.severity, {1, row.top + (row.height - markSize) / 2, markSize, markSize},
                theme);
    }
}

} // namespace plum
