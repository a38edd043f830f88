#pragma once

#include <QLineEdit>

namespace plum {

// The keyword box `Text8`, and any other entry that takes a dropped file.
class FileEntry final : public QLineEdit
{
    Q_OBJECT

public:
    FileEntry(const QString &name, QWidget *parent);

    void focusAtEnd();

Q_SIGNALS:
    void downPressed();
    void enterPressed();
    void fileDropped(const QString &path); // the first of them

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

} // namespace plum
