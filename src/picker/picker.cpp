#include "picker/picker.h"

#include "picker/pick_window.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int longStep = 10; // pixels
constexpr int smallestDrag = 4; // pixels

QPoint directionOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

// Rectangles are drawn with keys and mouse; Tab goes through the others.
PickedLine lineBehind(PickedLine line)
{
    switch (line) {
    case PickedLine::Move:
        return PickedLine::Colour;
    case PickedLine::Colour:
        return PickedLine::Window;
    case PickedLine::Window:
    case PickedLine::Picture:
        break;
    }
    return PickedLine::Move;
}

} // namespace

Picker::Picker(DesktopView view, Wish wish)
    : m_view(std::move(view))
    , m_wish(wish)
{
}

Picker::~Picker() = default;

void Picker::start(QPoint point)
{
    for (QScreen *screen : QGuiApplication::screens())
        m_windows.push_back(std::make_unique<PickWindow>(*this, *screen));
    moveTo(point);
    for (const auto &window : m_windows)
        window->showFullScreen();
    const auto pointed
        = std::ranges::find_if(m_windows, [](const auto &window) { return window->hasPoint(); });
    if (pointed != m_windows.end()) {
        (*pointed)->activateWindow();
        (*pointed)->setFocus();
    }
}

std::optional<QRect> Picker::rectangle() const
{
    const std::optional<QPoint> corner = isDrawn() ? m_pressed : m_corner;
    if (!corner)
        return {};
    const QPoint from(std::min(corner->x(), m_point.x()), std::min(corner->y(), m_point.y()));
    const QPoint to(std::max(corner->x(), m_point.x()), std::max(corner->y(), m_point.y()));
    return QRect(from, to);
}

// Less than a few pixels are a click of an unsteady hand.
bool Picker::isDrawn() const
{
    return m_pressed && (m_point - *m_pressed).manhattanLength() >= smallestDrag;
}

QString Picker::note() const
{
    const PickedPoint here = pointIn(m_view, m_point);
    QStringList lines = factsOf(here);
    if (const auto part = rectangle())
        lines += tr("Enter takes a picture of %1 x %2 pixels").arg(part->width()).arg(part->height());
    else if (m_wish.line == PickedLine::Picture)
        lines += tr("Enter sets the first corner of a picture");
    else
        lines += tr("Enter writes %1").arg(linesFor(m_wish.line, here, m_wish.edition).join(u" · "_s));
    lines += tr("Tab: another line · Space: a corner of a picture · Esc: give up");
    return lines.join(u'\n');
}

void Picker::show()
{
    for (const auto &window : m_windows)
        window->showChange();
}

void Picker::moveTo(QPoint point)
{
    const QRect desktop = m_view.desktop();
    m_point = {std::clamp(point.x(), desktop.left(), desktop.right()),
        std::clamp(point.y(), desktop.top(), desktop.bottom())};
    show();
}

void Picker::press(QPoint point)
{
    moveTo(point);
    m_pressed = m_point;
}

void Picker::release(QPoint point)
{
    if (!m_pressed)
        return;
    moveTo(point);
    if (isDrawn())
        m_corner = m_pressed;
    m_pressed.reset();
    take();
}

bool Picker::takesKey(const QKeyEvent &event)
{
    if (const QPoint direction = directionOf(event.key()); !direction.isNull()) {
        const int step = event.modifiers() & Qt::ShiftModifier ? longStep : 1;
        moveTo(m_point + direction * step);
        return true;
    }
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        take();
        return true;
    case Qt::Key_Space:
        m_corner = m_corner ? std::nullopt : std::optional(m_point);
        show();
        return true;
    case Qt::Key_Tab:
        m_wish.line = lineBehind(m_wish.line);
        show();
        return true;
    case Qt::Key_Escape:
        giveUp();
        return true;
    default:
        return false;
    }
}

void Picker::take()
{
    if (m_hasEnded)
        return;
    if (const auto part = rectangle()) {
        end();
        Q_EMIT rectangleTaken(*part);
    } else if (m_wish.line == PickedLine::Picture) {
        m_corner = m_point;
        show();
    } else {
        end();
        Q_EMIT pointTaken(pointIn(m_view, m_point), m_wish.line);
    }
}

void Picker::giveUp()
{
    if (m_hasEnded)
        return;
    end();
    Q_EMIT givenUp();
}

void Picker::end()
{
    m_hasEnded = true;
    for (const auto &window : m_windows)
        window->hide();
}

} // namespace plum
