#include "platform/x11/clipboard/keeper/selection_keeper.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>

namespace plum::keeper {

namespace {

constexpr uint8_t sentBit = 0x80;
constexpr size_t piece = 256 * 1024; // bytes; what needs more than one goes in pieces
constexpr int patience
    = 5000; // milliseconds a running transfer may stand still once there is nothing else to do

// Characters beyond Latin-1 become question marks.
std::string toLatin1(std::string_view utf8)
{
    std::string latin1;
    latin1.reserve(utf8.size());
    for (size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        const bool continues = (byte & 0xc0) == 0x80;
        const bool twoBytesLatin1 = (byte == 0xc2 || byte == 0xc3) && i + 1 < utf8.size();
        if (twoBytesLatin1)
            latin1 += static_cast<char>((byte & 0x03) << 6 | (static_cast<unsigned char>(utf8[++i]) & 0x3f));
        else if (!continues)
            latin1 += byte < 0x80 ? static_cast<char>(byte) : '?';
    }
    return latin1;
}

template <typename Event> const Event &as(const xcb_generic_event_t &event)
{
    return reinterpret_cast<const Event &>(event);
}

} // namespace

SelectionKeeper::SelectionKeeper(std::string utf8)
    : m_utf8(std::move(utf8))
    , m_latin1(toLatin1(m_utf8))
    , m_connection(xcb_connect(nullptr, nullptr))
{
}

xcb_atom_t SelectionKeeper::atom(std::string_view name)
{
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> found(xcb_intern_atom_reply(m_connection.get(),
        xcb_intern_atom(m_connection.get(), 0, static_cast<uint16_t>(name.size()), name.data()), nullptr));
    return found ? found->atom : xcb_atom_t(XCB_ATOM_NONE);
}

std::string_view SelectionKeeper::text(Coding coding) const
{
    return coding == Coding::Utf8 ? m_utf8 : m_latin1;
}

void SelectionKeeper::makeForms()
{
    const xcb_atom_t utf8 = atom("UTF8_STRING");
    const xcb_atom_t plain = atom("text/plain");
    const xcb_atom_t plainUtf8 = atom("text/plain;charset=utf-8");
    m_forms = {{utf8, utf8, Coding::Utf8}, {plainUtf8, plainUtf8, Coding::Utf8}, {plain, plain, Coding::Utf8},
        {atom("TEXT"), utf8, Coding::Utf8}, {XCB_ATOM_STRING, XCB_ATOM_STRING, Coding::Latin1}};
}

// The server tells its time with the notice of a property that changed.
xcb_timestamp_t SelectionKeeper::serverTime()
{
    xcb_change_property(
        m_connection.get(), XCB_PROP_MODE_APPEND, m_window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0, "");
    xcb_flush(m_connection.get());
    while (const Event event{xcb_wait_for_event(m_connection.get())}) {
        if ((event->response_type & ~sentBit) == XCB_PROPERTY_NOTIFY)
            return as<xcb_property_notify_event_t>(*event).time;
    }
    return XCB_CURRENT_TIME;
}

bool SelectionKeeper::takeOver()
{
    if (xcb_connection_has_error(m_connection.get()))
        return false;
    const xcb_setup_t *setup = xcb_get_setup(m_connection.get());
    m_longestPiece = std::min(piece, (size_t(setup->maximum_request_length) * 4) / 2);
    m_clipboard = atom("CLIPBOARD");
    m_targets = atom("TARGETS");
    m_timestamp = atom("TIMESTAMP");
    m_multiple = atom("MULTIPLE");
    m_pair = atom("ATOM_PAIR");
    m_incr = atom("INCR");
    m_saveTargets = atom("SAVE_TARGETS");
    makeForms();

    m_window = xcb_generate_id(m_connection.get());
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, m_window,
        xcb_setup_roots_iterator(setup).data->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    m_since = serverTime();
    xcb_set_selection_owner(m_connection.get(), m_window, m_clipboard, m_since);
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> owner(xcb_get_selection_owner_reply(
        m_connection.get(), xcb_get_selection_owner(m_connection.get(), m_clipboard), nullptr));
    m_owns = owner && owner->owner == m_window;
    return m_owns;
}

void SelectionKeeper::offerToManager()
{
    const xcb_atom_t manager = atom("CLIPBOARD_MANAGER");
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> owner(xcb_get_selection_owner_reply(
        m_connection.get(), xcb_get_selection_owner(m_connection.get(), manager), nullptr));
    if (!owner || owner->owner == XCB_NONE)
        return;
    const xcb_atom_t property = atom("PLUM_SAVE");
    std::vector<xcb_atom_t> targets;
    for (const Form &form : m_forms)
        targets.push_back(form.target);
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, property, XCB_ATOM_ATOM, 32,
        static_cast<uint32_t>(targets.size()), targets.data());
    xcb_convert_selection(m_connection.get(), m_window, manager, m_saveTargets, property, m_since);
}

// Waits for the server. Null when it has gone, or when nothing is left but transfers that stand still.
SelectionKeeper::Event SelectionKeeper::nextEvent()
{
    while (!xcb_connection_has_error(m_connection.get())) {
        if (Event event{xcb_poll_for_event(m_connection.get())})
            return event;
        xcb_flush(m_connection.get());
        pollfd descriptor{xcb_get_file_descriptor(m_connection.get()), POLLIN, 0};
        if (poll(&descriptor, 1, isNeeded() ? -1 : patience) == 0)
            break;
    }
    return nullptr;
}

void SelectionKeeper::serve()
{
    while (isNeeded() || !m_transfers.empty()) {
        const Event event = nextEvent();
        if (!event)
            return;
        handle(*event);
    }
    xcb_flush(m_connection.get());
}

void SelectionKeeper::handle(const xcb_generic_event_t &event)
{
    switch (event.response_type & ~sentBit) {
    case XCB_SELECTION_REQUEST:
        answer(as<xcb_selection_request_event_t>(event));
        break;
    case XCB_SELECTION_CLEAR:
        m_owns = m_owns && as<xcb_selection_clear_event_t>(event).selection != m_clipboard;
        break;
    case XCB_SELECTION_NOTIFY: {
        const auto &done = as<xcb_selection_notify_event_t>(event);
        m_saved = done.target == m_saveTargets && done.property != XCB_ATOM_NONE;
        break;
    }
    case XCB_PROPERTY_NOTIFY: {
        const auto &change = as<xcb_property_notify_event_t>(event);
        if (change.state == XCB_PROPERTY_DELETE)
            sendNextPiece(change.window, change.atom);
        break;
    }
    case XCB_DESTROY_NOTIFY:
        forget(as<xcb_destroy_notify_event_t>(event).window);
        break;
    default:
        break;
    }
}

void SelectionKeeper::answer(const xcb_selection_request_event_t &request)
{
    // Old programs name no property and mean the target's own name.
    const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
    bool delivered = false;
    if (request.target == m_multiple) {
        deliverPairs(request.requestor, property);
        delivered = true;
    } else {
        delivered = deliver(request.requestor, request.target, property);
    }
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    notice.property = delivered ? property : xcb_atom_t(XCB_ATOM_NONE);
    xcb_send_event(m_connection.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
        reinterpret_cast<const char *>(&notice));
}

bool SelectionKeeper::deliver(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property)
{
    if (target == m_targets) {
        std::vector<xcb_atom_t> targets{m_targets, m_timestamp, m_multiple};
        for (const Form &form : m_forms)
            targets.push_back(form.target);
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_ATOM, 32,
            static_cast<uint32_t>(targets.size()), targets.data());
        return true;
    }
    if (target == m_timestamp) {
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_INTEGER,
            32, 1, &m_since);
        return true;
    }
    const auto form = std::ranges::find(m_forms, target, &Form::target);
    if (form == m_forms.end())
        return false;
    deliverText(requestor, *form, property);
    return true;
}

void SelectionKeeper::deliverText(xcb_window_t requestor, const Form &form, xcb_atom_t property)
{
    const std::string_view whole = text(form.coding);
    if (whole.size() <= m_longestPiece) {
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, form.type, 8,
            static_cast<uint32_t>(whole.size()), whole.data());
        return;
    }
    // From here the requestor asks for each piece by deleting the one before.
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection.get(), requestor, XCB_CW_EVENT_MASK, &events);
    const auto size = static_cast<uint32_t>(whole.size());
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, m_incr, 32, 1, &size);
    std::erase_if(m_transfers,
        [&](const Transfer &old) { return old.requestor == requestor && old.property == property; });
    m_transfers.push_back({requestor, property, form.type, form.coding, 0});
}

// Several requests in one: pairs of a target and the property for it. A target that is refused is struck out.
void SelectionKeeper::deliverPairs(xcb_window_t requestor, xcb_atom_t property)
{
    constexpr uint32_t most = 1024; // units of four bytes
    const std::unique_ptr<xcb_get_property_reply_t, Free> found(xcb_get_property_reply(m_connection.get(),
        xcb_get_property(m_connection.get(), 0, requestor, property, m_pair, 0, most), nullptr));
    if (!found || found->format != 32)
        return;
    const auto *first = static_cast<const xcb_atom_t *>(xcb_get_property_value(found.get()));
    std::vector<xcb_atom_t> atoms(
        first, first + static_cast<size_t>(xcb_get_property_value_length(found.get())) / sizeof(xcb_atom_t));
    for (size_t i = 0; i + 1 < atoms.size(); i += 2) {
        if (atoms[i] == m_multiple || atoms[i + 1] == XCB_ATOM_NONE
            || !deliver(requestor, atoms[i], atoms[i + 1]))
            atoms[i + 1] = XCB_ATOM_NONE;
    }
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, m_pair, 32,
        static_cast<uint32_t>(atoms.size()), atoms.data());
}

void SelectionKeeper::sendNextPiece(xcb_window_t requestor, xcb_atom_t property)
{
    const auto transfer = std::ranges::find_if(m_transfers, [&](const Transfer &running) {
        return running.requestor == requestor && running.property == property;
    });
    if (transfer == m_transfers.end())
        return;
    const std::string_view next = text(transfer->coding).substr(transfer->sent, m_longestPiece);
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, transfer->type, 8,
        static_cast<uint32_t>(next.size()), next.data());
    transfer->sent += next.size();
    // The empty piece that was sent now is the end.
    if (next.empty())
        m_transfers.erase(transfer);
}

void SelectionKeeper::forget(xcb_window_t requestor)
{
    std::erase_if(m_transfers, [&](const Transfer &transfer) { return transfer.requestor == requestor; });
}

} // namespace plum::keeper
