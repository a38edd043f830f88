#pragma once

#include <QList>
#include <QString>

namespace plum {

// A place of a script where a variable or a part stands by its name.
struct NameUse
{
    // The scope of parts; variables have scopes from 0 on.
    static constexpr int partScope = -1;

    int scope = 0; // the same name in two scopes is two variables
    QString name;
    int line = 1; // from 1
    int column = 1; // from 1, where the value that names it is written
    bool isSet = false; // the line sets the variable, or the part begins there

    bool operator==(const NameUse &) const = default;
};

struct NameUses
{
    QList<NameUse> uses; // in no order
    bool areAllKnown = true; // false when a value decides which variable a line sets
    int scopes = 0;
};

} // namespace plum
