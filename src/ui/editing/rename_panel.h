#pragma once

#include <QWidget>

class QLineEdit;

namespace plum {

class FileEntry;

// The rename panel `editnamebox`: the old keyword, the new one, and the picture that confirms.
class RenamePanel final : public QWidget
{
    Q_OBJECT

public:
    explicit RenamePanel(QWidget *parent);

    QSize sizeHint() const override;

    void open(const QString &keyword);

    QString oldKeyword() const;
    QString newKeyword() const;
    void takeFocus();

Q_SIGNALS:
    void confirmed();
    void back();

private:
    QLineEdit *Text1; // the old keyword
    FileEntry *Text12; // the new keyword
};

} // namespace plum
