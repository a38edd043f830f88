#include "user_acts.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

namespace plum {

namespace {

// As long as browsers take what a page does for the consequence of a click; a busy page is slow.
constexpr std::chrono::seconds goodFor(5);

bool isConfirmingKey(const QKeyEvent &event)
{
    const bool confirms
        = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter || event.key() == Qt::Key_Space;
    return confirms && !event.isAutoRepeat();
}

bool follows(Qt::MouseButton button)
{
    return button == Qt::LeftButton || button == Qt::MiddleButton;
}

} // namespace

UserActs::UserActs(std::function<const QWidget *()> browser)
    : m_browser(std::move(browser))
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool UserActs::take()
{
    const bool isThere = !m_until.hasExpired();
    forget();
    return isThere;
}

void UserActs::note()
{
    m_until.setRemainingTime(goodFor);
}

bool UserActs::isOnBrowser(const QObject &watched) const
{
    const QWidget *browser = m_browser();
    return browser && watched.isWidgetType()
        && (&watched == browser || browser->isAncestorOf(static_cast<const QWidget *>(&watched)));
}

bool UserActs::eventFilter(QObject *watched, QEvent *event)
{
    if (!event->spontaneous() || !isOnBrowser(*watched))
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (follows(static_cast<QMouseEvent *>(event)->button()))
            note();
        break;
    case QEvent::MouseButtonRelease:
        // The end of the same click: it lasts as long as the button was held, and counts once.
        if (follows(static_cast<QMouseEvent *>(event)->button()) && !m_until.hasExpired())
            note();
        break;
    case QEvent::KeyPress:
        if (isConfirmingKey(*static_cast<QKeyEvent *>(event)))
            note();
        break;
    case QEvent::TouchBegin:
        note();
        break;
    default:
        break;
    }
    return false;
}

} // namespace plum
