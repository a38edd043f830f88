#include "confined_page.h"

#include <QWebEngineDownloadRequest>
#include <QWebEngineQuotaRequest>
#include <QWebEngineRegisterProtocolHandlerRequest>
#include <QWebEngineSettings>

#include <array>

namespace plum {

namespace {

constexpr std::array switchedOff{
    QWebEngineSettings::ErrorPageEnabled,
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

ConfinedPage::ConfinedPage(QWebEngineProfile &profile, QObject *parent)
    : QWebEnginePage(&profile, parent)
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

QStringList ConfinedPage::chooseFiles(FileSelectionMode, const QStringList &, const QStringList &)
{
    return {};
}

// A page that shows boxes in a loop would hold its window for ever, so none is shown.
void ConfinedPage::javaScriptAlert(const QUrl &, const QString &)
{
}

// "Yes", because the engine asks in the same way whether a page may be left, which no page can refuse.
bool ConfinedPage::javaScriptConfirm(const QUrl &, const QString &)
{
    return true;
}

bool ConfinedPage::javaScriptPrompt(const QUrl &, const QString &, const QString &, QString *)
{
    return false;
}

void ConfinedPage::javaScriptConsoleMessage(
    JavaScriptConsoleMessageLevel, const QString &, int, const QString &)
{
}

} // namespace plum
