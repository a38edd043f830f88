#pragma once

#include "store_form.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace plum {

// The store window of a Plum that was built without a browser: it says so, opens every page in the default
// browser, and installs packages by their names.
class PlainStoreForm final : public StoreForm
{
    Q_OBJECT

public:
    explicit PlainStoreForm(const QUrl &downloadBase);

    void showAddress(const QUrl &address) override;
    void writePage(const QString &html) override;
    void clearPage() override;
    void setLoadingVisible(bool) override { }
    void bringUp() override;

private:
    void install();
    void openPage();

    const QUrl m_downloadBase;
    QUrl m_page; // the last one, which the user can open again
    QString m_sent; // instead of it, the page of another program
    QLabel *m_explanation;
    QPushButton *m_open;
    QLineEdit *m_name;
    QPushButton *m_install;
};

} // namespace plum
