#pragma once

#include <QFile>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QObject>
#include <QWindow>

namespace plum::test {

// Writes down what reaches the windows of a program, one line an event, so that a test can see a desktop with
// the eyes of an ordinary program. Installed as the application's event filter.
class EventLog final : public QObject
{
public:
    // How a key event names its key, in hexadecimal digits.
    enum class KeyNames {
        Native, // the system's number: a keysym on X11, a virtual-key code on Windows
        Portable, // a Qt::Key
    };

    EventLog(const QString &path, KeyNames keyNames);

    void write(const QString &line);

    // Added to the places of the mouse, where Qt does not know where a window is.
    void setShift(QPoint shift) { m_shift = shift; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void describe(const QWindow &window, const QEvent &event);
    void describeKey(const QKeyEvent &event);
    void describeMouse(const QString &what, const QMouseEvent &event);

    QFile m_file;
    KeyNames m_keyNames;
    QPoint m_shift;
};

// "x,y,width,height" as a program's arguments have it.
QRect rectangleFromText(const QString &text);

} // namespace plum::test
