#include "search/colour_text.h"

#include "engine/conversions.h"

namespace plum {

Channels Channels::fromText(QStringView text)
{
    return {hexByte(text.mid(0, 2)), hexByte(text.mid(2, 2)), hexByte(text.mid(4, 2))};
}

} // namespace plum
