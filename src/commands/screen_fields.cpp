#include "commands/screen_fields.h"

#include "engine/conversions.h"
#include "engine/text_functions.h"
#include "platform/screen.h"

namespace plum {

using namespace Qt::StringLiterals;

ScreenArea areaOf(const QString &text, Screen &screen)
{
    if (text.isEmpty()) {
        const QSize size = screen.mainScreenSize();
        return {0, 0, size.width(), size.height()};
    }
    const auto field = [&](int index) { return toInt32(Piece(text, u":"_s, index)); };
    return {field(0), field(1), field(2), field(3)};
}

} // namespace plum
