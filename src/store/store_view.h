#pragma once

#include <QObject>
#include <QString>
#include <QUrl>

#include <vector>

namespace plum {

struct DownloadProgress
{
    double percent = 0; // 0 to 100
    QString total; // sizes and speed with their units
    QString done;
    QString speed; // per second
};

// An app of the library that came from the store.
struct StoreApp
{
    QString keyword;
    QString version = {}; // empty: not known
    QString newest = {}; // the version that the store has now; empty where that is no newer one
    QString path = {}; // of the package to install over it, below the store's folder of packages

    bool operator==(const StoreApp &) const = default;
};

// The store window as its logic sees it: the frame, the browser `llq` and the display of a download. Every
// call returns at once; what cannot be done yet is done when it can be. Sizes are in pixels.
class StoreView : public QObject
{
    Q_OBJECT

public:
    // False when this installation has no browser engine; all other calls then do nothing.
    virtual bool isAvailable() const = 0;

    // Shows the window on top of the others.
    virtual void showWindow() = 0;
    virtual void hideWindow() = 0;
    virtual void setCaption(const QString &text) = 0;
    virtual void setWindowHeight(int pixels) = 0;

    virtual void navigate(const QUrl &address) = 0;
    // Leaves the browser with an empty page, waits until that is complete, and writes `html` into it, a page
    // of another program: it reaches nothing, and the window says where it is from.
    virtual void writePage(const QString &html) = 0;
    virtual void clearPage() = 0;
    virtual void setBrowserWidth(int pixels) = 0;
    virtual void setBrowserHeight(int pixels) = 0;

    // Sizes the window after its browser, centres it and places what is around the browser.
    virtual void layOut() = 0;

    // The picture `loadimgbox` with its text `loadt`, in front of the browser until a page has loaded.
    virtual void setLoadingVisible(bool visible) = 0;

    virtual void setProgress(const DownloadProgress &progress) = 0;

    // Which apps are installed: the window says so, and offers each of them anew.
    virtual void setApps(const std::vector<StoreApp> &apps) = 0;

    // The app that was to be installed and was not, which can be tried again; empty for none.
    virtual void setFailed(const QString &keyword) = 0;

Q_SIGNALS:
    // A page has loaded as a whole.
    void pageCompleted();

    // The user followed a link to a package: a page cannot do this by itself.
    void packageFollowed(const QUrl &link);

    // The user followed a link of a loaded page that wanted a new window for this address, which belongs into
    // the default browser: one for each thing that the user did.
    void outsideOpened(const QUrl &address);

    // The user wants an installed app anew, or in its newest version; or what has failed once more. These are
    // controls of the window: no page reaches them.
    void anewRequested(const QString &keyword);
    void retryRequested();

    // Esc, `Image1`, or the window manager's request.
    void closeRequested();
};

} // namespace plum
