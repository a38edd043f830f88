#pragma once

#include <QPoint>
#include <QString>

#include <vector>
#include <xcb/xcb.h>

namespace plum {

// A person at the keyboard and the mouse of a display: real events, made by the server itself, at whatever
// window they meet. Nothing of the backend under test is used.
class Hands
{
public:
    explicit Hands(const QString &display);
    ~Hands();
    Q_DISABLE_COPY_MOVE(Hands)

    enum Button : uint8_t {
        Left = 1,
        Right = 3,
    };

    void moveTo(QPoint point);
    void press(Button button = Left);
    void release(Button button = Left);
    void click(QPoint point, Button button = Left);
    void doubleClick(QPoint point);

    // Presses at `from` and moves in small steps to `to`.
    void pull(QPoint from, QPoint to);

    // A key with its modifiers, e.g. "Return" or "alt+z".
    void key(const QString &combination);

    // Each character of a US keyboard.
    void type(const QString &text);

    // A combination and at once a text, all in one go: not even the server can do anything between them.
    void keyAndType(const QString &combination, const QString &text);

    void keyDown(const QString &name);
    void keyUp(const QString &name);

private:
    struct Key
    {
        xcb_keycode_t code;
        bool shifted;
    };

    Key find(xcb_keysym_t symbol) const;
    static xcb_keysym_t symbolOf(const QString &name);
    void fake(uint8_t type, uint8_t detail);
    void sendCombination(const QString &combination);
    void sendText(const QString &text);
    void sync();

    xcb_connection_t *m_connection;
    xcb_window_t m_root;
    std::vector<xcb_keysym_t> m_symbols;
    int m_symbolsPerKey = 0;
    xcb_keycode_t m_firstKey;
};

} // namespace plum
