#include "platform/x11/clipboard/selection_reader.h"

#include "platform/x11/connection/x11_connection.h"

#include <QDeadlineTimer>

#include <utility>

namespace plum {

SelectionReader::SelectionReader(X11Connection &connection)
    : m_connection(connection)
{
    m_connection.addReceiver([this](const xcb_generic_event_t &event) { receive(event); });
}

void SelectionReader::receive(const xcb_generic_event_t &event)
{
    constexpr uint8_t sentBit = 0x80;
    switch (event.response_type & ~sentBit) {
    case XCB_SELECTION_NOTIFY: {
        const auto &answer = reinterpret_cast<const xcb_selection_notify_event_t &>(event);
        if (answer.requestor == m_window)
            m_progress.answer = answer.property;
        else
            xcb_destroy_window(m_connection.xcb(), answer.requestor); // it came too late
        break;
    }
    case XCB_PROPERTY_NOTIFY: {
        const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
        if (change.window == m_window && change.atom == m_property && change.state == XCB_PROPERTY_NEW_VALUE)
            m_progress.hasPiece = true;
        break;
    }
    default:
        break;
    }
}

QString SelectionReader::text(int milliseconds)
{
    if (!m_connection.isOpen())
        return {};
    for (const char *target : {"UTF8_STRING", "STRING", "TEXT"}) {
        const std::optional<Value> value = convert(target, milliseconds);
        if (!value)
            return {};
        if (const std::optional<QString> text = decoded(*value))
            return *text;
    }
    return {};
}

// Nothing when the owner did not deliver in time; a value without a type when it refused.
std::optional<SelectionReader::Value> SelectionReader::convert(const char *target, int milliseconds)
{
    m_property = m_connection.atom("PLUM_CLIPBOARD");
    // A window of its own for every request, so that an answer that comes too late is not taken for the next.
    m_window = xcb_generate_id(m_connection.xcb());
    m_progress = {};
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection.xcb(), XCB_COPY_FROM_PARENT, m_window, m_connection.root(), 0, 0, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_convert_selection(m_connection.xcb(), m_window, m_connection.atom("CLIPBOARD"),
        m_connection.atom(target), m_property, XCB_CURRENT_TIME);

    std::optional<Value> value;
    if (m_connection.waitUntil([this] { return m_progress.answer.has_value(); }, milliseconds)) {
        value.emplace();
        if (*m_progress.answer != XCB_ATOM_NONE) {
            m_progress.hasPiece = false;
            *value = takeProperty();
            if (value->type == m_connection.atom("INCR") && !readInPieces(*value, milliseconds))
                value.reset();
        }
    }
    // An owner that is late still writes to its window, and many programs end when that window has gone.
    const xcb_window_t window = std::exchange(m_window, XCB_NONE);
    if (value)
        xcb_destroy_window(m_connection.xcb(), window);
    m_connection.flush();
    return value;
}

// Taking a property away asks the owner for the next piece; an empty piece is the end. An owner that goes on
// is not one that hangs, so each piece has the whole time.
bool SelectionReader::readInPieces(Value &value, int milliseconds)
{
    constexpr int mostPatience = 10; // times as long, for all pieces
    const QDeadlineTimer deadline(mostPatience * milliseconds, Qt::PreciseTimer);
    value = {};
    while (!deadline.hasExpired()
        && m_connection.waitUntil([this] { return m_progress.hasPiece; }, milliseconds)) {
        m_progress.hasPiece = false;
        const Value piece = takeProperty();
        if (piece.type == XCB_ATOM_NONE)
            continue;
        value.type = piece.type;
        if (piece.bytes.isEmpty())
            return true;
        value.bytes += piece.bytes;
    }
    return false;
}

SelectionReader::Value SelectionReader::takeProperty()
{
    constexpr uint32_t everything = 0x1fffffff;
    const auto found = m_connection.reply(xcb_get_property_reply, xcb_get_property, 1, m_window, m_property,
        XCB_GET_PROPERTY_TYPE_ANY, 0, everything);
    if (!found)
        return {};
    return {found->type,
        QByteArray(static_cast<const char *>(xcb_get_property_value(found.get())),
            xcb_get_property_value_length(found.get()))};
}

std::optional<QString> SelectionReader::decoded(const Value &value)
{
    constexpr char escape = 0x1b;
    if (value.type == XCB_ATOM_NONE)
        return {};
    if (value.type == m_connection.atom("UTF8_STRING"))
        return QString::fromUtf8(value.bytes);
    // Compound text is Latin-1 until its first escape sequence.
    if (value.type == XCB_ATOM_STRING
        || (value.type == m_connection.atom("COMPOUND_TEXT") && !value.bytes.contains(escape)))
        return QString::fromLatin1(value.bytes);
    return {};
}

} // namespace plum
