#pragma once

#include <QUrl>
#include <QWebEnginePage>
#include <QWebEngineProfile>

#include <functional>

namespace plum {

// A page that is kept away from this computer: no permissions, no files, no downloads. A link to a package
// is reported instead of followed.
class StorePageView final : public QWebEnginePage
{
    Q_OBJECT

public:
    StorePageView(QWebEngineProfile &profile, QUrl downloadBase, QObject *parent);

    // Shows an address; forgets what write() has still to write.
    void showAddress(const QUrl &address);

    // Writes `html` into an empty page, as soon as the browser has one.
    void write(const QString &html);

Q_SIGNALS:
    // The top document has loaded; not raised for the empty page.
    void completed();
    void packageFollowed(const QUrl &link);

    // The loaded page wanted a new window; `address` is that of the link with the focus.
    void outsideOpened(const QUrl &address);

    // A page that is not complete yet opens `page` in a window of its own.
    void windowOpened(plum::StorePageView *page);

protected:
    bool acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage *createWindow(WebWindowType type) override;
    QStringList chooseFiles(
        FileSelectionMode mode, const QStringList &oldFiles, const QStringList &acceptedMimeTypes) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString &message, int lineNumber,
        const QString &sourceId) override;

private:
    void restrict();
    void loadHasFinished(bool isThere);
    void openFocusedLinkOutside();

    const QUrl m_downloadBase;
    QString m_toWrite;
    bool m_waitsForBlank = false;
    bool m_isComplete = false;
};

// A profile that keeps nothing and downloads nothing.
void makeThrowAway(QWebEngineProfile &profile);

} // namespace plum
