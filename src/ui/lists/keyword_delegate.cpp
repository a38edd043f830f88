#include "ui/lists/keyword_delegate.h"

#include "look/theme.h"
#include "ui/lists/app_faces.h"
#include "ui/lists/keyword_list.h"

#include <QApplication>
#include <QPainter>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int rowHeight = 46;
constexpr int margin = 9;

// The letter that stands for an app without a picture, on a colour of its own.
void paintLetter(QPainter &painter, const QRect &square, const QString &keyword, bool isDark)
{
    uint hash = 0;
    for (const QChar c : keyword)
        hash = hash * 31 + c.unicode();
    const int hue = static_cast<int>(hash % 360);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromHsl(hue, isDark ? 70 : 110, isDark ? 78 : 215));
    painter.drawRoundedRect(square, 7, 7);

    const qsizetype length = !keyword.isEmpty() && keyword.front().isHighSurrogate() ? 2 : 1;
    QFont font = painter.font();
    font.setBold(true);
    painter.save();
    painter.setFont(font);
    painter.setPen(QColor::fromHsl(hue, isDark ? 120 : 130, isDark ? 205 : 62));
    painter.drawText(square, Qt::AlignCenter, keyword.left(length).toUpper());
    painter.restore();
}

// The row that Enter in the keyword box runs: a bar at its left and the key's sign at its right.
void paintMark(QPainter &painter, const QRect &row, const Theme &theme)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.accent);
    painter.drawRoundedRect(QRectF(row.left(), row.top() + 9, 3, row.height() - 18), 1.5, 1.5);
    painter.setPen(theme.accent);
    painter.drawText(row.adjusted(0, 0, -margin, 0), Qt::AlignRight | Qt::AlignVCenter, u"⏎"_s);
}

} // namespace

KeywordDelegate::KeywordDelegate(AppFaces &faces, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_faces(faces)
{
}

QSize KeywordDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return {100, rowHeight};
}

void KeywordDelegate::paint(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const Theme theme = Theme::of(QApplication::palette());
    const QString keyword = index.data().toString();
    const bool selected = option.state & QStyle::State_Selected;
    const bool focused = selected && (option.state & QStyle::State_HasFocus);

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRect row = option.rect.adjusted(2, 1, -2, -1);
    if (selected || (option.state & QStyle::State_MouseOver)) {
        painter->setPen(selected && !focused ? QPen(theme.accent, 1) : QPen(Qt::NoPen));
        painter->setBrush(focused ? theme.accent : theme.hover);
        painter->drawRoundedRect(QRectF(row).adjusted(0.5, 0.5, -0.5, -0.5), 7, 7);
    }

    if (!selected && (option.state & QStyle::State_HasFocus)) {
        painter->setPen(QPen(theme.accent, 2));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(QRectF(row).adjusted(1, 1, -1, -1), 7, 7);
    }

    const auto *list = qobject_cast<const KeywordList *>(option.widget);
    if (list && !selected && list->isMarked(keyword))
        paintMark(*painter, row, theme);

    const AppFaces::Face face = m_faces.face(keyword, iconSide, painter->device()->devicePixelRatioF());
    const QRect square(row.left() + margin, row.center().y() - iconSide / 2 + 1, iconSide, iconSide);
    if (face.icon.isNull()) {
        paintLetter(*painter, square, keyword, theme.isDark);
    } else {
        QRectF placed(QPointF(), face.icon.deviceIndependentSize());
        placed.moveCenter(QRectF(square).center());
        painter->drawPixmap(placed.topLeft(), face.icon);
    }

    QRect text = row.adjusted(margin + iconSide + 11, 5, -margin, -5);
    const QFont font = option.font;
    if (!face.summary.isEmpty()) {
        QFont small = font;
        small.setPointSizeF(font.pointSizeF() * 0.85);
        const QFontMetrics metrics(small);
        painter->setFont(small);
        painter->setPen(focused ? theme.onAccent : theme.quiet);
        painter->drawText(text, Qt::AlignLeft | Qt::AlignBottom,
            metrics.elidedText(face.summary, Qt::ElideRight, text.width()));
        text.setBottom(text.bottom() - metrics.height());
    }
    painter->setFont(font);
    painter->setPen(focused ? theme.onAccent : theme.text);
    painter->drawText(text, Qt::AlignLeft | Qt::AlignVCenter,
        QFontMetrics(font).elidedText(keyword, Qt::ElideMiddle, text.width()));
    painter->restore();
}

} // namespace plum
