#pragma once

#include <QString>

#include <span>

namespace plum {

// A row of the key-name table. Rows that are not `returned` are recognised without yielding their code;
// kept: scripts rely on what the lookup gives, and the codes stay on record.
struct KeyName
{
    QStringView name;
    quint8 virtualKey;
    bool returned;
};

// The table in the order in which it is tested.
std::span<const KeyName> keycodeasc();

// The virtual-key code of a key name in any letter case; 0 for a name that yields none. The letter z has no
// entry, and the empty name yields Z; both kept.
quint8 virtualKeyOf(const QString &name);

} // namespace plum
