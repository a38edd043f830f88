#pragma once

#include <QStringListModel>

namespace plum {

// What the launcher's two lists show: `List` holds all keywords in their saved order, `List2` those that
// contain the text of the keyword box.
class AppLists
{
public:
    QStringListModel List;
    QStringListModel List2;

    // Fills `List2` with the keywords that hold `typed` anywhere, letter case counting.
    void filter(const QString &typed);

    void append(const QString &keyword);

    // Adds an app from the store at the end of each list that does not hold it.
    void addToBoth(const QString &keyword);

    // Puts `keyword` at the top of both lists; it is listed once.
    void insertFirst(const QString &keyword);

    // Renames the first item equal to `from`, in both lists.
    void rename(const QString &from, const QString &to);

    void remove(const QString &keyword);
};

} // namespace plum
