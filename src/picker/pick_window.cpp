#include "picker/pick_window.h"

#include "picker/magnifier.h"
#include "picker/picker.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include <cmath>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int cardGap = 24; // between the mark and the card
constexpr qreal rounding = 0.001; // pixels: what is left of a whole one behind a division and its reverse
constexpr int longestLine = 560; // of the note; titles of windows have any length

QString cardStyle(const Theme &theme)
{
    return uR"(
QFrame#pickCard { background: %1; border: 1px solid %2; border-radius: 6px; }
QLabel { color: %3; }
)"_s.arg(theme.window.name(), theme.border.name(), theme.text.name());
}

} // namespace

PickWindow::PickWindow(Picker &picker, QScreen &screen)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
    , m_picker(picker)
    , m_corner(screen.geometry().topLeft())
    , m_scale(picker.view().pixelsOfUnit(screen))
{
    setObjectName(u"picker"_s);
    setWindowTitle(tr("Pick"));
    setScreen(&screen);
    setGeometry(screen.geometry());
    setMouseTracking(true);
    setCursor(Qt::BlankCursor); // the mark goes with the pointer
    setFocusPolicy(Qt::StrongFocus);

    auto *card = new QFrame(this);
    m_card = card;
    card->setObjectName(u"pickCard"_s);
    card->setStyleSheet(cardStyle(Theme::of(QApplication::palette())));
    card->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_magnifier = new Magnifier(picker, card);
    m_magnifier->setObjectName(u"magnifier"_s);
    m_note = new QLabel(card);
    m_note->setObjectName(u"pickNote"_s);
    m_note->setTextFormat(Qt::PlainText);
    auto *column = new QVBoxLayout(card);
    column->addWidget(m_magnifier);
    column->addWidget(m_note);
}

bool PickWindow::hasPoint() const
{
    return fromDesktop({m_picker.point(), QSize(1, 1)})
        .intersects(QRectF(QPointF(), screen()->geometry().size()));
}

QPoint PickWindow::toDesktop(QPointF place) const
{
    return m_corner
        + QPoint(static_cast<int>(std::floor(place.x() * m_scale + rounding)),
            static_cast<int>(std::floor(place.y() * m_scale + rounding)));
}

QRectF PickWindow::fromDesktop(const QRect &part) const
{
    return {QPointF(part.topLeft() - m_corner) / m_scale, QSizeF(part.size()) / m_scale};
}

void PickWindow::showChange()
{
    const bool hasMark = hasPoint();
    m_card->setVisible(hasMark);
    if (hasMark) {
        const QString note = m_picker.note();
        QStringList lines = note.split(u'\n');
        for (QString &line : lines)
            line = m_note->fontMetrics().elidedText(line, Qt::ElideMiddle, longestLine);
        m_note->setText(lines.join(u'\n'));
        // For a screen reader the window is what has the keyboard.
        setAccessibleName(note);
        m_magnifier->update();
        placeCard();
    }
    update();
}

// Where there is room beside the mark: the card never covers it.
void PickWindow::placeCard()
{
    const QSize size = m_card->sizeHint();
    const QPoint mark = fromDesktop({m_picker.point(), QSize(1, 1)}).toRect().topLeft();
    const int right = mark.x() + cardGap;
    const int below = mark.y() + cardGap;
    const int x = right + size.width() <= width() ? right : std::max(mark.x() - cardGap - size.width(), 0);
    const int y = below + size.height() <= height() ? below : std::max(mark.y() - cardGap - size.height(), 0);
    m_card->setGeometry(QRect({x, y}, size));
}

void PickWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    showChange();
}

void PickWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect whole(m_corner, QSizeF(QSizeF(size()) * m_scale).toSize());
    painter.drawImage(QRectF(rect()), m_picker.view().picture(),
        QRectF(whole.translated(-m_picker.view().desktop().topLeft())));
    if (const auto part = m_picker.rectangle()) {
        const QRectF frame = fromDesktop(*part).adjusted(-1, -1, 0, 0);
        painter.setPen(Qt::white);
        painter.drawRect(frame);
        painter.setPen(QPen(Qt::black, 1, Qt::DashLine));
        painter.drawRect(frame);
    }
    // Black beside white is seen on every colour; what is meant stays free.
    const QRectF mark = fromDesktop({m_picker.point(), QSize(1, 1)});
    for (const auto &[colour, shift] : {std::pair(Qt::white, 0.0), std::pair(Qt::black, 1.0)}) {
        const qreal x = mark.center().x() + shift;
        const qreal y = mark.center().y() + shift;
        constexpr qreal free = 6;
        painter.setPen(QPen(QColor(colour), 1));
        painter.drawLine(QLineF(0, y, mark.center().x() - free, y));
        painter.drawLine(QLineF(mark.center().x() + free, y, width(), y));
        painter.drawLine(QLineF(x, 0, x, mark.center().y() - free));
        painter.drawLine(QLineF(x, mark.center().y() + free, x, height()));
    }
}

void PickWindow::keyPressEvent(QKeyEvent *event)
{
    if (!m_picker.takesKey(*event))
        QWidget::keyPressEvent(event);
}

// The place in the scene is not rounded to whole pixels of the window.
void PickWindow::mouseMoveEvent(QMouseEvent *event)
{
    m_picker.moveTo(toDesktop(event->scenePosition()));
}

void PickWindow::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_picker.press(toDesktop(event->scenePosition()));
    else if (event->button() == Qt::RightButton)
        m_picker.giveUp();
}

void PickWindow::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_picker.release(toDesktop(event->scenePosition()));
}

// However a window manager takes it away.
void PickWindow::closeEvent(QCloseEvent *event)
{
    m_picker.giveUp();
    QWidget::closeEvent(event);
}

} // namespace plum
