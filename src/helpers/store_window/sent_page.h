#pragma once

#include "confined_page.h"

#include <QWebEngineUrlRequestInterceptor>

namespace plum {

// Lets a page have what it brought along, and nothing else.
class NoRequests final : public QWebEngineUrlRequestInterceptor
{
    Q_OBJECT

public:
    void interceptRequest(QWebEngineUrlRequestInfo &request) override;
};

// A page that another program has sent. Its scripts run and reach nothing: no store, no other address, no
// link, no window.
class SentPage final : public ConfinedPage
{
    Q_OBJECT

public:
    SentPage(QWebEngineProfile &profile, QObject *parent);

    // Writes `html` into the empty page, as soon as the browser has one.
    void write(const QString &html);

protected:
    bool acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage *createWindow(WebWindowType type) override;

private:
    void loadHasFinished();

    QString m_toWrite;
    bool m_isWritten = false;
};

} // namespace plum
