#include "commands/points.h"

#include "engine/conversions.h"
#include "engine/text_functions.h"

namespace plum {

using namespace Qt::StringLiterals;

ScriptPoint ScriptPoint::fromText(const QString &text)
{
    return {toInt16(Piece(text, u":"_s, 0)), toInt16(Piece(text, u":"_s, 1))};
}

QString ScriptPoint::toText() const
{
    return u"%1:%2"_s.arg(x).arg(y);
}

ScriptPoint ScriptPoint::operator+(ScriptPoint other) const
{
    return {wrappingSum(x, other.x), wrappingSum(y, other.y)};
}

} // namespace plum
