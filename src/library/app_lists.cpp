#include "library/app_lists.h"

namespace plum {

namespace {

void insertFirstInto(QStringListModel &model, const QString &keyword)
{
    QStringList items = model.stringList();
    items.removeAll(keyword);
    items.prepend(keyword);
    model.setStringList(items);
}

void renameIn(QStringListModel &model, const QString &from, const QString &to)
{
    const qsizetype row = model.stringList().indexOf(from);
    if (row >= 0)
        model.setData(model.index(static_cast<int>(row)), to);
}

void removeFrom(QStringListModel &model, const QString &keyword)
{
    const qsizetype row = model.stringList().indexOf(keyword);
    if (row >= 0)
        model.removeRow(static_cast<int>(row));
}

// The first letters of a keyword's words, small: "gp" of "git-pull", "GitPull" and "git pull".
QString initials(const QString &keyword)
{
    QString letters;
    bool atStart = true;
    bool wasSmall = false;
    for (const QChar c : keyword) {
        const bool begins = c.isLetterOrNumber() && (atStart || (wasSmall && c.isUpper()));
        if (begins)
            letters += c.toLower();
        atStart = !c.isLetterOrNumber();
        wasSmall = c.isLower();
    }
    return letters;
}

bool isClose(const QString &keyword, const QString &typed)
{
    return keyword.contains(typed, Qt::CaseInsensitive) || initials(keyword).startsWith(typed.toLower());
}

} // namespace

QStringList AppLists::matches(const QString &typed) const
{
    const QStringList all = List.stringList();
    QStringList found = all.filter(typed, Qt::CaseSensitive);
    if (order == ListOrder::Recent) {
        for (const QString &keyword : all) {
            if (!keyword.contains(typed) && isClose(keyword, typed))
                found += keyword;
        }
    }
    return found;
}

void AppLists::filter(const QString &typed)
{
    List2.setStringList(matches(typed));
}

void AppLists::append(const QString &keyword)
{
    List.setStringList(List.stringList() << keyword);
}

void AppLists::addToBoth(const QString &keyword)
{
    for (QStringListModel *model : {&List, &List2}) {
        if (!model->stringList().contains(keyword))
            model->setStringList(model->stringList() << keyword);
    }
}

void AppLists::insertFirst(const QString &keyword)
{
    insertFirstInto(List, keyword);
    insertFirstInto(List2, keyword);
}

void AppLists::rename(const QString &from, const QString &to)
{
    renameIn(List, from, to);
    renameIn(List2, from, to);
}

bool AppLists::noteRun(const QString &keyword)
{
    const qsizetype row = List.stringList().indexOf(keyword);
    // Moved, not set anew: a selected row stays selected.
    return order == ListOrder::Recent && row > 0
        && List.moveRow(QModelIndex(), static_cast<int>(row), QModelIndex(), 0);
}

void AppLists::remove(const QString &keyword)
{
    removeFrom(List, keyword);
    removeFrom(List2, keyword);
}

} // namespace plum
