#pragma once

#include <QStringView>

namespace plum {

// What a message whose English words are fixed says, in the session's language; empty where that is English,
// and for every other text.
QString meaningOfFixed(QStringView text);

} // namespace plum
