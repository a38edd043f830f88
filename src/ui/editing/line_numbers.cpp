#include "ui/editing/line_numbers.h"

#include "look/theme.h"
#include "ui/editing/script_editor.h"

#include <QMouseEvent>
#include <QPainter>
#include <QTextBlock>

#include <algorithm>

namespace plum {

namespace {

constexpr int fewestDigits = 2; // a script that grows does not push its text aside at once
constexpr int gap = 6; // pixels around the numbers
constexpr qreal markSize = 7;
constexpr qreal arrowSize = 9;

// At the line before which a run is held.
void drawArrow(QPainter &painter, const QRectF &where, const Theme &theme)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.text);
    painter.drawPolygon(
        QPolygonF({where.topLeft(), QPointF(where.right(), where.center().y()), where.bottomLeft()}));
}

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
    setAccessibleName(tr("Line numbers"));
    setToolTip(tr("A click sets a breakpoint, and takes it away (F9)"));
    // A press here would otherwise reach the panel below, which the window is dragged by.
    setAttribute(Qt::WA_NoMousePropagation);
}

void LineNumbers::mousePressEvent(QMouseEvent *event)
{
    const qreal y = event->position().y();
    for (const ScriptEditor::Row &row : m_editor.rows()) {
        if (event->button() == Qt::LeftButton && row.top <= y && y < row.top + row.height) {
            Q_EMIT m_editor.breakpointWished(row.line);
            return;
        }
    }
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
        const QRectF place(0, row.top, width() - gap, row.height);
        if (row.hasBreakpoint) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(theme.accent);
            painter.drawRoundedRect(place.adjusted(markSize + 2, 0, gap - 2, 0), 3, 3);
        }
        painter.setPen(row.hasBreakpoint ? theme.onAccent : row.line == caretLine ? theme.text : theme.quiet);
        painter.drawText(place, Qt::AlignRight | Qt::AlignTop, QString::number(row.line + 1));
        if (row.isHeld)
            drawArrow(painter, {0, row.top + (row.height - arrowSize) / 2, arrowSize, arrowSize}, theme);
        else if (row.severity)
            drawMark(painter, *row.severity, {1, row.top + (row.height - markSize) / 2, markSize, markSize},
                theme);
    }
}

} // namespace plum
