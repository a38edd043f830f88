#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <span>

namespace plum {

// A key of the keyboard that the backend plugs in: laid out like a US one, so that a virtual key always means
// what it says.
struct TableKey
{
    quint8 virtualKey;
    quint16 code; // the kernel's number
    const char *symbols; // without and with Shift
};

// All keys that have a fixed meaning. Some have two virtual keys.
std::span<const TableKey> keyTable();

// Null for a virtual key that names no key.
const TableKey *tableKey(quint8 virtualKey);

// The kernel's numbers from here to the end are for keys that get their meaning when a text needs them.
constexpr quint16 firstSpareCode = 195;
constexpr quint16 lastSpareCode = 247;

// The keyboard's map in the format of XKB. The spare keys have one of `characters` each, in this order.
QByteArray keymapText(std::span<const char32_t> characters);

} // namespace plum
