#include "platform/x11/windows/hidden_note.h"

#include "platform/x11/connection/x11_connection.h"
#include "platform/x11/windows/window_facts.h"

namespace plum {

namespace {

constexpr char property[] = "_PLUM_HIDDEN";
constexpr size_t ownWidth = 4; // the rectangle, then where the window itself was left, then the states
constexpr size_t ownHeight = 5;
constexpr size_t firstState = 6;

} // namespace

void HiddenNote::writeOn(xcb_window_t window, X11Connection &connection, WindowFacts &facts) const
{
    const QSize own = facts.inside(window).size();
    std::vector<quint32> values;
    for (const int number :
        {rectangle.x(), rectangle.y(), rectangle.width(), rectangle.height(), own.width(), own.height()})
        values.push_back(static_cast<quint32>(number));
    values.insert(values.end(), states.begin(), states.end());
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, window, connection.atom(property),
        XCB_ATOM_CARDINAL, 32, static_cast<uint32_t>(values.size()), values.data());
    connection.sync(); // another process may ask next
}

std::optional<HiddenNote> HiddenNote::readFrom(xcb_window_t window, WindowFacts &facts)
{
    const std::vector<quint32> values = facts.numbers(window, property);
    if (values.size() < firstState)
        return {};
    const auto number = [&](size_t place) { return static_cast<int>(values[place]); };
    if (facts.inside(window).size() != QSize(number(ownWidth), number(ownHeight)))
        return {};
    return HiddenNote{
        QRect(number(0), number(1), number(2), number(3)), {values.begin() + firstState, values.end()}};
}

void HiddenNote::takeFrom(xcb_window_t window, X11Connection &connection)
{
    xcb_delete_property(connection.xcb(), window, connection.atom(property));
}

} // namespace plum
