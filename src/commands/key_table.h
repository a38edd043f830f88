#pragma once

#include <QStringList>

#include <optional>
#include <span>

namespace plum {

// A key by the name that edition 2 of the language gives it. Edition 1 has a table of its own (key_names.h),
// whose odd answers scripts rely on.
struct NamedKey
{
    QStringView name; // lower case
    quint8 virtualKey = 0; // as Windows numbers them
    // The key is the twin of one on the number pad, which an event without Keyboard::ExtendedKey would press.
    bool isExtended = false;

    bool isOfNumberPad() const { return virtualKey >= 96 && virtualKey <= 111; }
};

// All keys but letters, digits and f1 to f24, which their names number.
std::span<const NamedKey> namedKeys();

// The key with exactly this name; nothing for a name that is none.
std::optional<NamedKey> keyNamed(QStringView name);

// Every name that keyNamed() knows.
QStringList keyNames();

} // namespace plum
