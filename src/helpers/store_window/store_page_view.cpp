#include "store_page_view.h"

#include "store/protocol/package_link.h"

#include <QWebEngineView>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

bool isWebAddress(const QUrl &url)
{
    return url.scheme() == "http"_L1 || url.scheme() == "https"_L1;
}

} // namespace

StorePageView::StorePageView(QWebEngineProfile &profile, QUrl downloadBase, Windows windows, QObject *parent)
    : ConfinedPage(profile, parent)
    , m_downloadBase(std::move(downloadBase))
    , m_windows(windows)
    , m_acts([this] { return QWebEngineView::forPage(this); })
{
    connect(this, &QWebEnginePage::loadStarted, this, [this] {
        m_isComplete = false;
        m_hasRefused = false;
    });
    connect(this, &QWebEnginePage::loadFinished, this, &StorePageView::loadHasFinished);
}

void StorePageView::showAddress(const QUrl &address)
{
    m_isFresh = m_isFresh && address == blankAddress;
    load(address);
}

QUrl StorePageView::addressToReload() const
{
    return isWebAddress(url()) ? url() : QUrl();
}

void StorePageView::loadHasFinished(bool isThere)
{
    if (url() == blankAddress && isThere)
        return;
    m_isComplete = true;
    // The engine stops loading where a page goes elsewhere, also where that was refused and the page stays.
    if (isThere || m_hasRefused)
        Q_EMIT completed();
}

bool StorePageView::acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame)
{
    const bool goesOn = mayGoOn(url, type, isMainFrame);
    m_hasRefused = m_hasRefused || (!goesOn && isMainFrame && type != NavigationTypeRedirect);
    return goesOn;
}

bool StorePageView::mayGoOn(const QUrl &url, NavigationType type, bool isMainFrame)
{
    if (isBelowDownloads(url, m_downloadBase)) {
        // Not a frame, a form or a redirection, and not what only a script has clicked on.
        const bool isFollowed = isMainFrame && type == NavigationTypeLinkClicked;
        if (isFollowed && packageNameOf(url, m_downloadBase) && m_acts.take())
            Q_EMIT packageFollowed(url);
        return false;
    }
    const bool goesOn
        = isWebAddress(url) || url == blankAddress || (!isMainFrame && url.scheme() == "data"_L1);
    // The click that leads to a new page was for that, and the new page cannot have it.
    if (goesOn && isMainFrame)
        m_acts.forget();
    return goesOn;
}

QWebEnginePage *StorePageView::createWindow(WebWindowType)
{
    if (!m_acts.take())
        return nullptr;
    if (m_isComplete) {
        openFocusedLinkOutside();
        return nullptr;
    }
    if (m_windows == Windows::None)
        return nullptr;
    auto *page = new StorePageView(*profile(), m_downloadBase, Windows::None, this);
    Q_EMIT windowOpened(page);
    return page;
}

void StorePageView::openFocusedLinkOutside()
{
    runJavaScript(
        u"document.activeElement ? document.activeElement.href : ''"_s, [this](const QVariant &value) {
            const QUrl address(value.toString(), QUrl::StrictMode);
            if (packageNameOf(address, m_downloadBase))
                Q_EMIT packageFollowed(address);
            else if (isWebAddress(address) && !isBelowDownloads(address, m_downloadBase))
                Q_EMIT outsideOpened(address);
        });
}

} // namespace plum
