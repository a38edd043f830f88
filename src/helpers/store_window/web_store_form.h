#pragma once

#include "store_browser.h"
#include "store_form.h"

#include <QWebEngineProfile>

class QWebEngineView;

namespace plum {

class LoadingPicture;

// The store window with a browser of its own.
class WebStoreForm final : public StoreForm
{
    Q_OBJECT

public:
    WebStoreForm(const QUrl &downloadBase, bool dark);
    ~WebStoreForm() override;

    void showAddress(const QUrl &address) override;
    void writePage(const QString &html) override;
    void clearPage() override;
    void setLoadingVisible(bool visible) override;
    void bringUp() override;

private:
    void buildPages();
    void connectPage(StorePageView &page);
    void openPageWindow(StorePageView *page);
    void loadFailed(const QString &reason);

    QWebEngineProfile m_profile;
    StorePageView *m_page;
    QWebEngineView *llq = nullptr; // the browser
    QWidget *loadimgbox = nullptr; // covers the page while it loads
    LoadingPicture *m_picture = nullptr;
    QLabel *loadt = nullptr; // what it says
};

} // namespace plum
