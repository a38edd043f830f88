#pragma once

#include <QPoint>
#include <QString>

namespace plum {

// A point as scripts write it, "x:y". A text without ":" is both coordinates. Coordinates are 16-bit here:
// others raise an overflow (6), what is no number a type mismatch (13).
struct ScriptPoint
{
    qint16 x = 0;
    qint16 y = 0;

    static ScriptPoint fromText(const QString &text);
    QString toText() const;

    // Wraps around at 16 bits.
    ScriptPoint operator+(ScriptPoint other) const;
    QPoint toPoint() const { return {x, y}; }
};

} // namespace plum
