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

} // namespace

void AppLists::filter(const QString &typed)
{
    List2.setStringList(List.stringList().filter(typed, Qt::CaseSensitive));
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

void AppLists::remove(const QString &keyword)
{
    removeFrom(List, keyword);
    removeFrom(List2, keyword);
}

} // namespace plum
