#pragma once

#include <QUrl>
#include <QWebEnginePage>
#include <QWebEngineProfile>

namespace plum {

// The empty page.
inline const QUrl blankAddress(QStringLiteral("about:blank"));

// A page that is kept away from this computer and from the user's attention: no permissions, no files, no
// downloads, no boxes that would hold its window.
class ConfinedPage : public QWebEnginePage
{
    Q_OBJECT

public:
    ConfinedPage(QWebEngineProfile &profile, QObject *parent);

    // The address to show when the user wants this page anew; none for a page that cannot be had again.
    virtual QUrl addressToReload() const { return {}; }

Q_SIGNALS:
    // The top document has loaded; not raised for the empty page.
    void completed();

protected:
    QStringList chooseFiles(
        FileSelectionMode mode, const QStringList &oldFiles, const QStringList &acceptedMimeTypes) override;
    void javaScriptAlert(const QUrl &origin, const QString &text) override;
    bool javaScriptConfirm(const QUrl &origin, const QString &text) override;
    bool javaScriptPrompt(
        const QUrl &origin, const QString &text, const QString &usual, QString *result) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString &message, int lineNumber,
        const QString &sourceId) override;
};

// A profile that keeps nothing and downloads nothing.
void makeThrowAway(QWebEngineProfile &profile);

} // namespace plum
