#pragma once

#include <QStringList>

namespace plum::kit {

// `plumkit dry`: says what a script would do. `arguments` stand behind the command; returns the exit status.
int sayDry(int argc, char **argv, const QStringList &arguments);

} // namespace plum::kit
