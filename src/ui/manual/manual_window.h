#pragma once

#include "look/borderless_window.h"

class QLineEdit;
class QTextBrowser;

namespace plum {

// The scripting manual. Its pages are in the program, so that it is there without a net and without docs/.
class ManualWindow final : public BorderlessWindow
{
    Q_OBJECT

public:
    explicit ManualWindow(QWidget *owner);

    void bringUp();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void follow(const QUrl &link);
    void open(const QString &page, const QString &heading); // from its beginning without a heading
    void findNext();

    QTextBrowser *m_text;
    QLineEdit *m_wanted;
    QString m_page;
    QStringList m_before; // pages that Back leads to, the last one at the end
};

} // namespace plum
