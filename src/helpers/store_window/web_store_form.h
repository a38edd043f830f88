#pragma once

#include "sent_page.h"
#include "store_form.h"
#include "store_page_view.h"

#include <QPointer>
#include <QWebEngineProfile>

class QPushButton;
class QWebEngineView;

namespace plum {

class LoadingPicture;

// The store window with a browser of its own, which shows either a page of the store or one that another
// program has sent. Each is a page of its own in its own profile, so that nothing of the one before can reach
// it, hold it or keep the processor busy.
class WebStoreForm final : public StoreForm
{
    Q_OBJECT

public:
    explicit WebStoreForm(const QUrl &downloadBase);
    ~WebStoreForm() override;

    void showAddress(const QUrl &address) override;
    void writePage(const QString &html) override;
    void clearPage() override;
    void setLoadingVisible(bool visible) override;
    void bringUp() override;

protected:
    void hideEvent(QHideEvent *event) override;

private:
    void buildPages();
    QWidget *buildNote();
    StorePageView &freshStorePage();
    void usePage(ConfinedPage *page);
    void connectPage(StorePageView &page);
    void openPageWindow(StorePageView *page);
    void pageFailed(const QString &reason, const QUrl &address);
    void reload();

    const QUrl m_downloadBase;
    QWebEngineProfile m_storeProfile;
    NoRequests m_noRequests;
    QWebEngineProfile m_sentProfile;
    ConfinedPage *m_page = nullptr;
    QPointer<QWebEngineView> m_pageWindow; // what a page has opened; one at most
    QUrl m_failed; // what could not be shown
    QWebEngineView *llq = nullptr; // the browser
    QWidget *m_sentBy = nullptr; // says that a page is another program's
    QWidget *loadimgbox = nullptr; // covers the page while it loads
    LoadingPicture *m_picture = nullptr;
    QLabel *loadt = nullptr; // what it says
    QPushButton *m_retry = nullptr;
};

} // namespace plum
