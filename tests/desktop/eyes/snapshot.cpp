#include "desktop/eyes/snapshot.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QWindow>

namespace plum::eyes {

using namespace Qt::StringLiterals;

namespace {

QJsonArray asJson(const QRect &rectangle)
{
    return {rectangle.x(), rectangle.y(), rectangle.width(), rectangle.height()};
}

QRect onScreen(const QWidget &widget, const QRect &rectangle)
{
    return {widget.mapToGlobal(rectangle.topLeft()), rectangle.size()};
}

void describeList(const QAbstractItemView &list, QJsonObject &seen)
{
    QJsonArray items;
    QJsonArray rows;
    for (int row = 0; list.model() && row < list.model()->rowCount(); ++row) {
        const QModelIndex index = list.model()->index(row, 0);
        items += index.data().toString();
        rows += asJson(onScreen(*list.viewport(), list.visualRect(index)));
    }
    seen[u"items"_s] = items;
    seen[u"rows"_s] = rows;
    const QModelIndexList selected = list.selectionModel()->selectedIndexes();
    seen[u"text"_s] = selected.isEmpty() ? QString() : selected.first().data().toString();
}

// What a control shows, each kind in its own way.
void describeContent(const QWidget &widget, QJsonObject &seen)
{
    if (const auto *entry = qobject_cast<const QLineEdit *>(&widget)) {
        seen[u"text"_s] = entry->text();
        seen[u"caret"_s] = entry->cursorPosition();
    } else if (const auto *editor = qobject_cast<const QPlainTextEdit *>(&widget)) {
        seen[u"text"_s] = editor->toPlainText();
    } else if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
        seen[u"text"_s] = label->text();
    } else if (const auto *box = qobject_cast<const QMessageBox *>(&widget)) {
        seen[u"text"_s] = box->text();
        seen[u"icon"_s] = static_cast<int>(box->icon());
    } else if (const auto *button = qobject_cast<const QAbstractButton *>(&widget)) {
        seen[u"text"_s] = button->text();
        seen[u"checked"_s] = button->isChecked();
    } else if (const auto *letters = qobject_cast<const QComboBox *>(&widget)) {
        seen[u"text"_s] = letters->currentText();
        QJsonArray items;
        for (int i = 0; i < letters->count(); ++i)
            items += letters->itemText(i);
        seen[u"items"_s] = items;
    } else if (const auto *list = qobject_cast<const QAbstractItemView *>(&widget)) {
        describeList(*list, seen);
    }
}

// Message boxes and the opened list of a drop-down list have no names of their own.
QString nameOf(const QWidget &widget)
{
    if (qobject_cast<const QMessageBox *>(&widget))
        return u"message"_s;
    if (const auto *box = qobject_cast<const QMessageBox *>(widget.window())) {
        if (const auto *button = qobject_cast<const QAbstractButton *>(&widget)) {
            switch (box->standardButton(const_cast<QAbstractButton *>(button))) {
            case QMessageBox::Yes:
                return u"Yes"_s;
            case QMessageBox::No:
                return u"No"_s;
            case QMessageBox::Ok:
                return u"OK"_s;
            case QMessageBox::Save:
                return u"Save"_s;
            case QMessageBox::Discard:
                return u"Discard"_s;
            case QMessageBox::Cancel:
                return u"Cancel"_s;
            default:
                break;
            }
        }
    }
    if (qobject_cast<const QAbstractItemView *>(&widget)
        && widget.window()->inherits("QComboBoxPrivateContainer"))
        return u"list"_s;
    if (widget.inherits("QComboBoxPrivateContainer"))
        return u"dropped"_s;
    if (widget.inherits("QSystemTrayIconSys"))
        return u"tray icon"_s;
    return widget.objectName();
}

bool isShown(const QWidget &widget)
{
    const QWindow *window = widget.window()->windowHandle();
    return widget.isVisible() && window && window->isExposed();
}

QJsonObject describe(const QWidget &widget, const QString &name)
{
    QJsonObject seen{{u"name"_s, name}, {u"window"_s, nameOf(*widget.window())},
        {u"place"_s, asJson(onScreen(widget, widget.rect()))}, {u"shown"_s, isShown(widget)},
        {u"enabled"_s, widget.isEnabled()},
        {u"focus"_s, widget.hasFocus() && widget.window()->isActiveWindow()},
        {u"toolTip"_s, widget.toolTip()}};
    if (widget.isWindow()) {
        seen[u"title"_s] = widget.windowTitle();
        seen[u"topmost"_s] = widget.windowFlags().testFlag(Qt::WindowStaysOnTopHint);
        seen[u"id"_s] = widget.internalWinId() ? static_cast<qint64>(widget.internalWinId()) : 0;
    }
    describeContent(widget, seen);
    return seen;
}

void addItems(const QMenu &menu, QJsonArray &all)
{
    const bool isOpen = isShown(menu);
    for (const QAction *action : menu.actions()) {
        if (action->isSeparator())
            continue;
        const QString name = action->menu() ? action->menu()->objectName() : action->objectName();
        all += QJsonObject{{u"name"_s, name}, {u"window"_s, menu.objectName()},
            {u"place"_s, asJson(onScreen(menu, menu.actionGeometry(const_cast<QAction *>(action))))},
            {u"shown"_s, isOpen}, {u"enabled"_s, action->isEnabled()}, {u"text"_s, action->text()}};
    }
}

} // namespace

QByteArray snapshot()
{
    QJsonArray all;
    for (const QWidget *widget : QApplication::allWidgets()) {
        if (const QString name = nameOf(*widget); !name.isEmpty())
            all += describe(*widget, name);
        if (const auto *menu = qobject_cast<const QMenu *>(widget))
            addItems(*menu, all);
    }
    return QJsonDocument(all).toJson(QJsonDocument::Compact);
}

} // namespace plum::eyes
