#include "platform/x11/keyboard/x11_own_keys.h"

#include "platform/stop_signal.h"
#include "platform/x11/connection/x11_connection.h"
#include "platform/x11/keyboard/xcb_xkb.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>
#include <cstring>

namespace plum {

namespace {

// How long programs that cannot be asked may take to read the new map after an event that needed it.
constexpr qint64 settleMilliseconds = 250;
// How long those that can be asked may take to work off what came before the question.
constexpr int longestReading = 2000; // milliseconds
// What is left of either once the user has stopped the run, and how often that is looked at.
constexpr qint64 graceAtTheEnd = 20; // milliseconds
constexpr unsigned long glance = 5; // milliseconds
constexpr size_t most = 64; // keys

qint64 now()
{
    return QDeadlineTimer::current(Qt::PreciseTimer).deadline();
}

using Symbols = std::array<xkb_keysym_t, 2>;

bool isLetter(const Symbols &symbols)
{
    return symbols[0] != symbols[1] && xkb_keysym_to_upper(symbols[0]) == symbols[1];
}

// What stands on a key that is made for `symbol`: both cases of a letter, or it alone.
Symbols symbolsFor(xkb_keysym_t symbol)
{
    const xkb_keysym_t lower = xkb_keysym_to_lower(symbol);
    const Symbols cases{lower, xkb_keysym_to_upper(lower)};
    return isLetter(cases) && std::ranges::count(cases, symbol) != 0 ? cases
                                                                     : Symbols{symbol, XKB_KEY_NoSymbol};
}

// How many bytes the description of a key's symbols has.
size_t sizeOf(const xcb_xkb_key_sym_map_t &key)
{
    return sizeof key + key.nSyms * sizeof(xcb_keysym_t);
}

// The description of a key with these symbols in its only group.
QByteArray descriptionOf(const Symbols &symbols)
{
    // The types that every map begins with.
    constexpr uint8_t oneLevel = 0;
    constexpr uint8_t twoLevels = 1;
    constexpr uint8_t alphabetic = 2;
    const auto count = static_cast<uint8_t>(
        std::ranges::count_if(symbols, [](xkb_keysym_t symbol) { return symbol != XKB_KEY_NoSymbol; }));
    xcb_xkb_key_sym_map_t key{};
    key.kt_index[0] = count < 2 ? oneLevel : isLetter(symbols) ? alphabetic : twoLevels;
    key.groupInfo = count == 0 ? 0 : 1;
    key.width = count;
    key.nSyms = count;
    QByteArray bytes(reinterpret_cast<const char *>(&key), sizeof key);
    return bytes.append(
        reinterpret_cast<const char *>(symbols.data()), static_cast<qsizetype>(count * sizeof symbols[0]));
}

} // namespace

X11OwnKeys::X11OwnKeys(X11Connection &connection)
    : m_connection(connection)
    , m_receiver(connection)
{
}

bool X11OwnKeys::has(xcb_keycode_t key) const
{
    return std::ranges::find(m_keys, key, &OwnKey::key) != m_keys.end();
}

X11OwnKeys::OwnKey *X11OwnKeys::ownKeyWith(xkb_keysym_t symbol)
{
    const auto found = std::ranges::find_if(
        m_keys, [symbol](const OwnKey &own) { return std::ranges::count(own.symbols, symbol) != 0; });
    return found == m_keys.end() ? nullptr : &*found;
}

std::optional<X11OwnKeys::Place> X11OwnKeys::placeOf(xkb_keysym_t symbol) const
{
    for (const OwnKey &own : m_keys) {
        if (own.symbols[0] == symbol)
            return Place{own.key, false, isLetter(own.symbols)};
        if (own.symbols[1] == symbol)
            return Place{own.key, true, isLetter(own.symbols)};
    }
    return {};
}

// Keys for `count` new ones: unused ones, and then those of ours that have not been used for the longest
// time. False, and nothing changes, when there are not as many that nobody holds and `use` does not need.
bool X11OwnKeys::makeRoom(size_t count, std::optional<qint64> use, std::span<const xcb_keycode_t> unused,
    std::vector<xcb_keycode_t> &free)
{
    const size_t fresh = std::min({count, unused.size(), most - std::min(most, m_keys.size())});
    const auto isIdle = [use](const OwnKey &own) { return !own.held && own.lastUse != use; };
    if (count - fresh > static_cast<size_t>(std::ranges::count_if(m_keys, isIdle)))
        return false;
    free.assign(unused.begin(), unused.begin() + static_cast<std::ptrdiff_t>(fresh));
    std::ranges::stable_sort(
        m_keys, {}, [&](const OwnKey &own) { return std::pair(!isIdle(own), own.lastUse); });
    const auto idle = m_keys.begin() + static_cast<std::ptrdiff_t>(count - fresh);
    if (idle != m_keys.begin()) {
        waitUntilSettled(std::prev(idle)->lastUse, 0);
        if (m_stop)
            m_stop->check();
    }
    std::transform(m_keys.begin(), idle, std::back_inserter(free), [](const OwnKey &own) { return own.key; });
    m_keys.erase(m_keys.begin(), idle);
    return true;
}

// Later than every use before, so that it tells them apart however soon they follow each other.
qint64 X11OwnKeys::nextUse()
{
    m_latestUse = std::max(now(), m_latestUse + 1);
    return m_latestUse;
}

void X11OwnKeys::give(std::span<const xkb_keysym_t> symbols, std::span<const xcb_keycode_t> unused)
{
    const qint64 use = nextUse();
    const auto isIdle = [use](const OwnKey &own) { return !own.held && own.lastUse != use; };
    std::vector<OwnKey> fresh;
    for (const xkb_keysym_t symbol : symbols) {
        if (OwnKey *own = ownKeyWith(symbol)) {
            own->lastUse = use;
            continue;
        }
        if (std::ranges::any_of(
                fresh, [&](const OwnKey &own) { return std::ranges::count(own.symbols, symbol) != 0; }))
            continue;
        const Symbols wanted = symbolsFor(symbol);
        if (wanted[1] == XKB_KEY_NoSymbol && !fresh.empty() && fresh.back().symbols[1] == XKB_KEY_NoSymbol) {
            fresh.back().symbols[1] = symbol;
            continue;
        }
        const size_t room = std::min(unused.size(), most - std::min(most, m_keys.size()))
            + static_cast<size_t>(std::ranges::count_if(m_keys, isIdle));
        if (fresh.size() == room)
            break;
        // One that waits for its other half stays the last one.
        const auto at = !fresh.empty() && fresh.back().symbols[1] == XKB_KEY_NoSymbol ? std::prev(fresh.end())
                                                                                      : fresh.end();
        fresh.insert(at, {0, wanted, false, use});
    }
    std::vector<xcb_keycode_t> free;
    if (fresh.empty() || !makeRoom(fresh.size(), use, unused, free))
        return;
    for (size_t i = 0; i < fresh.size(); ++i)
        fresh[i].key = free[i];
    m_keys.insert(m_keys.end(), fresh.begin(), fresh.end());
    write(fresh);
}

std::optional<xcb_keycode_t> X11OwnKeys::hold(xkb_keysym_t symbol, std::span<const xcb_keycode_t> unused)
{
    const auto found = std::ranges::find(m_keys, symbol, [](const OwnKey &own) { return own.symbols[0]; });
    if (found != m_keys.end()) {
        found->held = true;
        found->lastUse = nextUse();
        return found->key;
    }
    std::vector<xcb_keycode_t> free;
    if (!makeRoom(1, {}, unused, free))
        return {};
    const OwnKey own{free.front(), symbolsFor(symbol), true, nextUse()};
    m_keys.push_back(own);
    write({&own, 1});
    return own.key;
}

void X11OwnKeys::letGo(xcb_keycode_t key)
{
    if (const auto own = std::ranges::find(m_keys, key, &OwnKey::key); own != m_keys.end())
        own->held = false;
}

// The keys lie scattered among those of the layout. One request can only describe all from the first to the
// last, so those between are described as they are; nobody else may change the map meanwhile.
void X11OwnKeys::write(std::span<const OwnKey> changed)
{
    constexpr uint16_t symbolsAlone = XCB_XKB_MAP_PART_KEY_SYMS;
    const auto [first, last] = std::ranges::minmax(changed, {}, &OwnKey::key);
    const auto count = static_cast<uint8_t>(last.key - first.key + 1);
    xcb_connection_t *const server = m_connection.xcb();
    xcb_grab_server(server);
    const auto before = m_connection.reply(xcb_xkb_get_map_reply, xcb_xkb_get_map,
        xcb_xkb_device_spec_t(XCB_XKB_ID_USE_CORE_KBD), 0, symbolsAlone, 0, 0, first.key, count, 0, 0, 0, 0,
        0, 0, 0, 0, 0, 0, 0);
    if (before && before->firstKeySym == first.key && before->nKeySyms == count) {
        QByteArray values;
        quint16 total = 0;
        const char *at = static_cast<const char *>(xcb_xkb_get_map_map(before.get()));
        for (int key = first.key; key <= last.key; ++key) {
            xcb_xkb_key_sym_map_t old;
            std::memcpy(&old, at, sizeof old);
            const auto mine = std::ranges::find(changed, key, &OwnKey::key);
            const QByteArray description = mine == changed.end()
                ? QByteArray(at, static_cast<qsizetype>(sizeOf(old)))
                : descriptionOf(mine->symbols);
            values += description;
            total = static_cast<quint16>(
                total + (static_cast<size_t>(description.size()) - sizeof old) / sizeof(xcb_keysym_t));
            at += sizeOf(old);
        }
        const auto change = xcb_xkb_set_map(server, XCB_XKB_ID_USE_CORE_KBD, symbolsAlone, 0,
            before->minKeyCode, before->maxKeyCode, 0, 0, first.key, count, total, 0, 0, 0, 0, 0, 0, 0, 0, 0,
            0, 0, 0, 0, 0, 0, 0, values.constData());
        m_change = static_cast<quint16>(change.sequence);
    }
    xcb_ungrab_server(server);
    m_connection.sync();
    m_connection.dispatchArrived();
    m_change.reset();
}

// Nobody else's change can have come before the map was free again, and that was another request.
bool X11OwnKeys::made(const xcb_generic_event_t &change) const
{
    return m_change && *m_change == change.sequence;
}

void X11OwnKeys::waitUntilSettled(qint64 lastUse, qint64 graceAtStop)
{
    if (lastUse < m_settledUntil)
        return;
    const qint64 begun = now();
    const auto isGivenUp = [&] { return m_stop && m_stop->isRaised() && now() - begun >= graceAtStop; };
    // A use that has begun already, and for which there is no room yet, is not among what was worked off.
    if (m_receiver.hasWorkedOff(longestReading, isGivenUp)) {
        m_settledUntil = lastUse + 1;
        return;
    }
    m_connection.sync();
    while (!isGivenUp() && now() - lastUse < settleMilliseconds)
        QThread::msleep(glance);
}

void X11OwnKeys::takeBack()
{
    if (m_keys.empty())
        return;
    waitUntilSettled(std::ranges::max(m_keys, {}, &OwnKey::lastUse).lastUse, graceAtTheEnd);
    std::vector<OwnKey> none(m_keys.begin(), m_keys.end());
    for (OwnKey &own : none)
        own.symbols = {XKB_KEY_NoSymbol, XKB_KEY_NoSymbol};
    write(none);
    m_keys.clear();
}

void X11OwnKeys::follow(xkb_keymap &keymap)
{
    std::erase_if(m_keys, [&](const OwnKey &own) {
        const xkb_keysym_t *symbols = nullptr;
        return xkb_keymap_num_layouts_for_key(&keymap, own.key) == 0
            || xkb_keymap_key_get_syms_by_level(&keymap, own.key, 0, 0, &symbols) != 1
            || symbols[0] != own.symbols[0];
    });
}

} // namespace plum
