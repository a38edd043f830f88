#pragma once

#include <QStringListModel>

namespace plum {

// The order of the lists.
enum class ListOrder {
    Saved, // as the list file has them; what is typed has to stand in a keyword exactly
    Recent, // what was run last comes first; behind the exact matches stand those that are close
};

// What the launcher's two lists show: `List` holds all keywords in their saved order, `List2` those that
// contain the text of the keyword box.
class AppLists
{
public:
    QStringListModel List;
    QStringListModel List2;

    ListOrder order = ListOrder::Saved;

    // The keywords that hold `typed` anywhere, letter case counting. In the order of use, those follow that
    // hold it in other letter case, or whose words begin with its letters.
    QStringList matches(const QString &typed) const;

    // Fills `List2` with them.
    void filter(const QString &typed);

    void append(const QString &keyword);

    // Adds an app from the store at the end of each list that does not hold it.
    void addToBoth(const QString &keyword);

    // Puts `keyword` at the top of both lists; it is listed once.
    void insertFirst(const QString &keyword);

    // Renames the first item equal to `from`, in both lists.
    void rename(const QString &from, const QString &to);

    void remove(const QString &keyword);

    // Notes that an app is run: in the order of use it goes to the top of `List`. Whether the order changed.
    bool noteRun(const QString &keyword);
};

} // namespace plum
