#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>
#include <xcb/xcb.h>

namespace plum::keeper {

// Owns the clipboard's text on behalf of a program that has ended, until another program takes the
// clipboard, a clipboard manager has saved the text, or the X server goes.
class SelectionKeeper
{
public:
    explicit SelectionKeeper(std::string utf8);
    SelectionKeeper(const SelectionKeeper &) = delete;
    SelectionKeeper &operator=(const SelectionKeeper &) = delete;

    // Returns whether the clipboard is ours from now on.
    bool takeOver();

    // Asks the clipboard manager, if there is one, to save the text.
    void offerToManager();

    // Serves other programs until there is no reason left to.
    void serve();

private:
    struct Disconnect
    {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };
    struct Free
    {
        void operator()(void *memory) const { std::free(memory); }
    };
    using Event = std::unique_ptr<xcb_generic_event_t, Free>;

    enum class Coding {
        Utf8,
        Latin1,
    };

    // A form in which the text is offered: `target` is asked for, `type` answered.
    struct Form
    {
        xcb_atom_t target;
        xcb_atom_t type;
        Coding coding;
    };

    // A long text on its way to one program, piece by piece.
    struct Transfer
    {
        xcb_window_t requestor;
        xcb_atom_t property;
        xcb_atom_t type;
        Coding coding;
        size_t sent;
    };

    xcb_atom_t atom(std::string_view name);
    xcb_timestamp_t serverTime();
    std::string_view text(Coding coding) const;
    void makeForms();

    bool isNeeded() const { return m_owns && !m_saved; }
    Event nextEvent();
    void handle(const xcb_generic_event_t &event);
    void answer(const xcb_selection_request_event_t &request);
    bool deliver(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
    void deliverText(xcb_window_t requestor, const Form &form, xcb_atom_t property);
    void deliverPairs(xcb_window_t requestor, xcb_atom_t property);
    void sendNextPiece(xcb_window_t requestor, xcb_atom_t property);
    void forget(xcb_window_t requestor);

    std::string m_utf8;
    std::string m_latin1;
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    xcb_window_t m_window = XCB_NONE;
    xcb_timestamp_t m_since = XCB_CURRENT_TIME; // when the clipboard became ours
    size_t m_longestPiece = 0; // bytes
    std::vector<Form> m_forms;
    std::vector<Transfer> m_transfers;
    bool m_owns = false;
    bool m_saved = false;

    xcb_atom_t m_clipboard = XCB_ATOM_NONE;
    xcb_atom_t m_targets = XCB_ATOM_NONE;
    xcb_atom_t m_timestamp = XCB_ATOM_NONE;
    xcb_atom_t m_multiple = XCB_ATOM_NONE;
    xcb_atom_t m_pair = XCB_ATOM_NONE;
    xcb_atom_t m_incr = XCB_ATOM_NONE;
    xcb_atom_t m_saveTargets = XCB_ATOM_NONE;
};

} // namespace plum::keeper
