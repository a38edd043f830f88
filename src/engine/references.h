#pragma once

#include <QStringView>

namespace plum {

// Whether `token` is one of the values that scripts can ask for beside their variables, like
// "os.path_desktop". "me.enter_input_" has a number behind it.
bool isReference(QStringView token);

} // namespace plum
