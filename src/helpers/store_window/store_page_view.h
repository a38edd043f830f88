#pragma once

#include "confined_page.h"
#include "user_acts.h"

namespace plum {

// A page of the store. It can wish for two things, to install a package and to open a page in the default
// browser; a wish is passed on when the user has done something in this page for it, once each time.
class StorePageView final : public ConfinedPage
{
    Q_OBJECT

public:
    // Whether it may open another page in a window of its own while it loads.
    enum class Windows {
        None,
        One,
    };

    StorePageView(QWebEngineProfile &profile, QUrl downloadBase, Windows windows, QObject *parent);

    // Shows an address.
    void showAddress(const QUrl &address);

    // Nothing but the empty page has been shown.
    bool isFresh() const { return m_isFresh; }

    QUrl addressToReload() const override;

Q_SIGNALS:
    void packageFollowed(const QUrl &link);

    // The loaded page wanted a new window; `address` is that of the link with the focus.
    void outsideOpened(const QUrl &address);

    // A page that is not complete yet opens `page` in a window of its own.
    void windowOpened(plum::StorePageView *page);

protected:
    bool acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage *createWindow(WebWindowType type) override;

private:
    bool mayGoOn(const QUrl &url, NavigationType type, bool isMainFrame);
    void loadHasFinished(bool isThere);
    void openFocusedLinkOutside();

    const QUrl m_downloadBase;
    const Windows m_windows;
    UserActs m_acts;
    bool m_isFresh = true;
    bool m_isComplete = false;
    // Whether the page wanted to go elsewhere while it was loading, and may not.
    bool m_hasRefused = false;
};

} // namespace plum
