#pragma once

#include <QStringView>

namespace plum {

// What a message whose English words are fixed says, in the session's language; empty where that is English,
// and for every other text. Of one with a reason behind an empty line the words in front of that count.
QString meaningOfFixed(QStringView text);

} // namespace plum
