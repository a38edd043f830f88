#include "sent_page.h"

#include "sent_page_policy.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

bool isBroughtAlong(const QUrl &url)
{
    return url == blankAddress || url.scheme() == "data"_L1 || url.scheme() == "blob"_L1;
}

} // namespace

void NoRequests::interceptRequest(QWebEngineUrlRequestInfo &request)
{
    if (!isBroughtAlong(request.requestUrl()))
        request.block(true);
}

SentPage::SentPage(QWebEngineProfile &profile, QObject *parent)
    : ConfinedPage(profile, parent)
{
    connect(this, &QWebEnginePage::loadFinished, this, &SentPage::loadHasFinished);
}

void SentPage::write(const QString &html)
{
    m_toWrite = html;
    load(blankAddress);
}

void SentPage::loadHasFinished()
{
    if (std::exchange(m_isWritten, true))
        return;
    // The document is told what it may have before the page is written into it, so that the page cannot take
    // it back. The interceptor refuses the same requests once more, whoever makes them. A text as JavaScript
    // source, whatever it holds; there is no limit to its length as with data: addresses.
    const QByteArray text
        = QJsonDocument(QJsonArray{std::exchange(m_toWrite, {})}).toJson(QJsonDocument::Compact);
    const QString script
        = u"(() => { const rule = document.createElement('meta');"
          "rule.httpEquiv = 'Content-Security-Policy'; rule.content = \"%1\"; document.head.append(rule);"_s
              .arg(sentPagePolicy)
        + u"document.open(); document.write("_s + QString::fromUtf8(text) + u"[0]); document.close(); })()"_s;
    runJavaScript(script, [this](const QVariant &) { Q_EMIT completed(); });
}

bool SentPage::acceptNavigationRequest(const QUrl &url, NavigationType, bool isMainFrame)
{
    return isMainFrame ? url == blankAddress && !m_isWritten : isBroughtAlong(url);
}

QWebEnginePage *SentPage::createWindow(WebWindowType)
{
    return nullptr;
}

} // namespace plum
