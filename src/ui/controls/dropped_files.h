#pragma once

#include <QObject>
#include <QStringList>

class QMimeData;
class QWidget;

namespace plum {

// The paths of dropped files, in the system's form. Addresses of other machines are none.
QStringList droppedFiles(const QMimeData *data);

// Lets files be dropped on a widget; every other drag goes by. Of several files the first counts.
class FileDropTarget final : public QObject
{
    Q_OBJECT

public:
    // `widget` is the one that receives the events: the viewport of a list.
    explicit FileDropTarget(QWidget &widget);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void fileDropped(const QString &path);
};

} // namespace plum
