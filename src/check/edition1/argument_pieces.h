#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace plum::edition1 {

// What one argument of an edition-1 line is, before anything runs.
struct Value
{
    enum class Kind {
        Empty, // nothing is written
        Literal, // a quoted text, or a text with a dot that stands for itself
        Reference, // set.x, os.y, mouse.xy, ...
        Template,
        Nothing, // unquoted and without a dot: evaluates to the empty text
        Broken, // its quotes are not what they seem, which is all that can be said
    };

    Kind kind = Kind::Empty;
    bool isQuoted = false;
    int column = 1; // of the first character as written, from 1
    QString written = {}; // with every `_,_` as a comma
    QString text = {}; // of a literal
    QString prefix = {}; // of a reference, without the dot
    QString name = {}; // of a reference, behind the dot
    QList<Value> names = {}; // of a template's list: references, or nothing
    int slotCount = 0; // of a template

    bool isLiteral() const { return kind == Kind::Literal || kind == Kind::Empty; }
    bool isReferenceTo(QStringView wanted) const { return kind == Kind::Reference && prefix == wanted; }
};

// The value that `written` evaluates to; `column` is where it stands.
Value valueOf(const QString &written, int column);

// The argument text of a line, split as the engine splits it. Columns count from 1 and are the line's.
struct Arguments
{
    QString text = {}; // everything behind the first blank of the line
    int column = 1;

    // The one quoted text that a whole argument text may be: then no separator counts.
    bool isOneQuotedText() const;

    // The arguments at `separator`; one where it does not occur. `_,_` is no comma.
    QList<Value> values(QChar separator) const;

    // The whole text as one value.
    Value whole() const;
};

} // namespace plum::edition1
