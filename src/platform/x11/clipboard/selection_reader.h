#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <xcb/xcb.h>

namespace plum {

class X11Connection;

// Asks another program for the text of the clipboard, in pieces where the text is long.
class SelectionReader
{
public:
    explicit SelectionReader(X11Connection &connection);

    // Empty when nobody owns the clipboard, it holds no text, or the owner stands still for so long; ten
    // times as long may a long text take as a whole.
    QString text(int milliseconds);

private:
    struct Value
    {
        xcb_atom_t type = XCB_ATOM_NONE;
        QByteArray bytes;
    };

    // What the server told about the running request.
    struct Progress
    {
        std::optional<xcb_atom_t> answer; // the property with the value; NONE for a refusal
        bool hasPiece = false;
    };

    void receive(const xcb_generic_event_t &event);
    std::optional<Value> convert(const char *target, int milliseconds);
    bool readInPieces(Value &value, int milliseconds);
    Value takeProperty();
    std::optional<QString> decoded(const Value &value);

    X11Connection &m_connection;
    xcb_window_t m_window = XCB_NONE; // of the running request
    xcb_atom_t m_property = XCB_ATOM_NONE;
    Progress m_progress;
};

} // namespace plum
