#pragma once

#include <QString>

namespace plum {

// Where the session bus listens; empty for none. Asked for by name, the library would start a session bus
// where there is none, and leave it behind.
QString sessionBusAddress();

QString systemBusAddress();

// Whether something at `address` takes connections and then says nothing for `patience` milliseconds: a bus
// that hangs. The library would wait for it without end. A bus that is not there at all is not silent; the
// library finds that out at once.
bool isSilentBus(const QString &address, int patience);

} // namespace plum
