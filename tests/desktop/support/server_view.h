#pragma once

#include <QByteArray>
#include <QPoint>
#include <QRect>
#include <QString>

#include <vector>
#include <xcb/xcb.h>

namespace plum {

// What an X server itself says about its windows, pointer and keyboard: the other opinion to that of the
// backend under test, on a connection of its own.
class ServerView
{
public:
    explicit ServerView(const QString &display);
    ~ServerView();
    Q_DISABLE_COPY_MOVE(ServerView)

    xcb_window_t root() const { return m_root; }

    // The window without what the window manager put around it.
    QRect clientRectangle(xcb_window_t window);

    // The outermost window around `window` below the root, borders included.
    QRect frameRectangle(xcb_window_t window);

    bool exists(xcb_window_t window);
    bool isViewable(xcb_window_t window);

    // The window manager's opinion.
    bool isActive(xcb_window_t window);
    bool isListed(xcb_window_t window);
    bool hasState(xcb_window_t window, const char *name);

    // Whether the window manager composes the screen from pictures of the windows.
    bool isComposited();

    // The window of exactly this title that is not `otherThan`; XCB_NONE when the window manager has none.
    xcb_window_t windowTitled(const QByteArray &title, xcb_window_t otherThan = XCB_NONE);

    // Whether a window of exactly this title has been made, shown or not, framed or not yet.
    bool hasWindowNamed(const QByteArray &title);

    // Whether the keyboard's input goes to this very window.
    bool hasKeyboard(xcb_window_t window);

    // The class of the active window, once the keyboard's input really goes there; empty otherwise.
    QByteArray classWithKeyboard();

    // Whether the frame of `upper` is stacked above that of `lower`.
    bool isAbove(xcb_window_t upper, xcb_window_t lower);

    // Asks to show the window, as its own program does.
    void map(xcb_window_t window);

    // Asks the window manager to give the window the keyboard.
    void activate(xcb_window_t window);

    // What the screen shows there, 0xRRGGBB.
    uint32_t pixel(QPoint point);

    QPoint pointer();
    bool anyButtonDown();
    std::vector<int> keysDown();

    // Whether keys reach programs: nobody has taken the whole keyboard or keeps back what is typed.
    bool isKeyboardFree();

    // Whether another program has taken the key of a letter with these modifiers for itself.
    bool isKeyTaken(char letter, uint16_t modifiers);

    // Takes it, as another program would; until this object's end.
    bool takeKey(char letter, uint16_t modifiers);

    // Every symbol of every key.
    std::vector<xcb_keysym_t> keyboardMap();
    int layoutGroup();
    void lockLayoutGroup(int group);

private:
    std::vector<uint32_t> numbers(xcb_window_t window, const char *property);
    xcb_atom_t atom(const char *name);
    QByteArray titleOf(xcb_window_t window);
    xcb_keycode_t keyOf(char letter);
    xcb_window_t frameOf(xcb_window_t window);

    xcb_connection_t *m_connection;
    xcb_window_t m_root;
};

} // namespace plum
