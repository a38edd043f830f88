#include "platform/x11/x11_platform.h"

#include "platform/x11/hand/x11_hand_watch.h"

#include <QAbstractEventDispatcher>

namespace plum {

bool X11Platform::hasServer()
{
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        return false;
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

X11Connection &X11Platform::connection()
{
    if (X11Connection *made = m_connection.ifMade())
        return *made;
    X11Connection &made = m_connection.get();
    if (made.isOpen()) {
        // Events that no call waits for are taken from the socket by the event loop.
        m_connectionEvents
            = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(made.xcb()), QSocketNotifier::Read);
        QObject::connect(
            m_connectionEvents.get(), &QSocketNotifier::activated, m_connectionEvents.get(), [this] {
                X11Connection &open = m_connection.get();
                open.dispatchArrived();
                // A server that has gone leaves its socket readable for ever.
                if (!open.isOpen())
                    m_connectionEvents->setEnabled(false);
            });
        // An event that came together with the answer to a request has left the socket already.
        if (QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance()) {
            QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, m_connectionEvents.get(),
                [this] { m_connection.get().dispatchArrived(); });
        }
    }
    return made;
}

std::unique_ptr<HandWatch> X11Platform::watchHand(const HandSigns &signs)
{
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        return nullptr;
    return std::make_unique<X11HandWatch>(signs);
}

void X11Platform::releaseDesktop()
{
    if (X11Pointer *pointer = m_pointer.ifMade())
        pointer->releaseAll();
    if (X11Keyboard *keyboard = m_keyboard.ifMade())
        keyboard->releaseAll();
    if (X11Connection *connection = m_connection.ifMade())
        connection->sync();
    if (X11Shell *shell = m_shell.ifMade())
        shell->finishStarts();
    if (auto *clipboard = m_clipboard.ifMade())
        clipboard->outliveProcess();
}

} // namespace plum
