#include "store_browser.h"

#include "store/protocol/package_link.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QWebEngineDownloadRequest>
#include <QWebEngineQuotaRequest>
#include <QWebEngineRegisterProtocolHandlerRequest>
#include <QWebEngineSettings>

#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

const QUrl blank(u"about:blank"_s);

constexpr std::array switchedOff{
    QWebEngineSettings::LocalContentCanAccessFileUrls,
    QWebEngineSettings::LocalContentCanAccessRemoteUrls,
    QWebEngineSettings::LocalStorageEnabled,
    QWebEngineSettings::PluginsEnabled,
    QWebEngineSettings::PdfViewerEnabled,
    QWebEngineSettings::ScreenCaptureEnabled,
    QWebEngineSettings::JavascriptCanAccessClipboard,
    QWebEngineSettings::JavascriptCanPaste,
    QWebEngineSettings::FullScreenSupportEnabled,
    QWebEngineSettings::AllowRunningInsecureContent,
    QWebEngineSettings::AllowGeolocationOnInsecureOrigins,
    QWebEngineSettings::AllowWindowActivationFromJavaScript,
    QWebEngineSettings::HyperlinkAuditingEnabled,
    QWebEngineSettings::DnsPrefetchEnabled,
};

bool isWebAddress(const QUrl &url)
{
    return url.scheme() == "http"_L1 || url.scheme() == "https"_L1;
}

} // namespace

void makeThrowAway(QWebEngineProfile &profile)
{
    profile.setHttpCacheType(QWebEngineProfile::MemoryHttpCache);
    profile.setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    profile.setSpellCheckEnabled(false);
    QObject::connect(&profile, &QWebEngineProfile::downloadRequested, &profile,
        [](QWebEngineDownloadRequest *download) { download->cancel(); });
    for (const QWebEngineSettings::WebAttribute attribute : switchedOff)
        profile.settings()->setAttribute(attribute, false);
    profile.settings()->setAttribute(QWebEngineSettings::WebRTCPublicInterfacesOnly, true);
    profile.settings()->setAttribute(QWebEngineSettings::PlaybackRequiresUserGesture, true);
    profile.settings()->setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
}

StorePageView::StorePageView(QWebEngineProfile &profile, QUrl downloadBase, QObject *parent)
    : QWebEnginePage(&profile, parent)
    , m_downloadBase(std::move(downloadBase))
{
    restrict();
    connect(this, &QWebEnginePage::loadStarted, this, [this] { m_isComplete = false; });
    connect(this, &QWebEnginePage::loadFinished, this, &StorePageView::loadHasFinished);
}

void StorePageView::restrict()
{
    connect(
        this, &QWebEnginePage::featurePermissionRequested, this, [this](const QUrl &origin, Feature feature) {
            setFeaturePermission(origin, feature, PermissionDeniedByUser);
        });
    connect(this, &QWebEnginePage::quotaRequested, this,
        [](QWebEngineQuotaRequest request) { request.reject(); });
    connect(this, &QWebEnginePage::registerProtocolHandlerRequested, this,
        [](QWebEngineRegisterProtocolHandlerRequest request) { request.reject(); });
}

void StorePageView::showAddress(const QUrl &address)
{
    m_waitsForBlank = false;
    m_toWrite.clear();
    load(address);
}

void StorePageView::write(const QString &html)
{
    m_toWrite = html;
    m_waitsForBlank = true;
    load(blank);
}

void StorePageView::loadHasFinished(bool isThere)
{
    if (url() != blank || !isThere) {
        m_isComplete = true;
        if (isThere)
            Q_EMIT completed();
        return;
    }
    if (!std::exchange(m_waitsForBlank, false))
        return;
    // A text as JavaScript source, whatever it holds; there is no limit to its length as with data:
    // addresses.
    const QByteArray text
        = QJsonDocument(QJsonArray{std::exchange(m_toWrite, {})}).toJson(QJsonDocument::Compact);
    const QString script
        = u"document.open();document.write("_s + QString::fromUtf8(text) + u"[0]);document.close();"_s;
    runJavaScript(script, [this](const QVariant &) {
        m_isComplete = true;
        Q_EMIT completed();
    });
}

bool StorePageView::acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame)
{
    if (packageNameOf(url, m_downloadBase)) {
        // Only what the user does installs something, not a frame or a redirection.
        if (isMainFrame && type == NavigationTypeLinkClicked)
            Q_EMIT packageFollowed(url);
        return false;
    }
    return isWebAddress(url) || url == blank || (!isMainFrame && url.scheme() == "data"_L1);
}

QWebEnginePage *StorePageView::createWindow(WebWindowType)
{
    if (m_isComplete) {
        openFocusedLinkOutside();
        return nullptr;
    }
    auto *page = new StorePageView(*profile(), m_downloadBase, this);
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
            else if (isWebAddress(address))
                Q_EMIT outsideOpened(address);
        });
}

QStringList StorePageView::chooseFiles(FileSelectionMode, const QStringList &, const QStringList &)
{
    return {};
}

void StorePageView::javaScriptConsoleMessage(
    JavaScriptConsoleMessageLevel, const QString &, int, const QString &)
{
}

} // namespace plum
