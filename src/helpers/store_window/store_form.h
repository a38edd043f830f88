#pragma once

#include "store_browser.h"

#include <QJsonObject>
#include <QWebEngineProfile>
#include <QWidget>

class QLabel;
class QProgressBar;
class QWebEngineView;

namespace plum {

class LoadingPicture;

// The store window `webbox`: borderless, the page below a bar that moves the window, a strip with the
// progress of a download below the page.
class StoreForm final : public QWidget
{
    Q_OBJECT

public:
    StoreForm(const QUrl &downloadBase, bool dark);
    ~StoreForm() override;

    void showAddress(const QUrl &address);
    void writePage(const QString &html);
    void clearPage();
    void setCaption(const QString &text);
    void setProgress(const QJsonObject &fields);
    void setLoadingVisible(bool visible);
    void setBrowserWidth(int pixels);
    void setBrowserHeight(int pixels);
    void setWindowHeight(int pixels);

    // The layout: the window takes the browser's size and what is around it, in the middle of the screen.
    void Command1_Click();

    void bringUp();

Q_SIGNALS:
    void closeRequested();
    void completed();
    void packageFollowed(const QUrl &link);
    void outsideOpened(const QUrl &address);

protected:
    void closeEvent(QCloseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    QWidget *buildBar();
    QWidget *buildStrip();
    void connectPage(StorePageView &page);
    void openPageWindow(StorePageView *page);
    void loadFailed(const QString &reason);
    Qt::Edges edgesAt(QPoint point) const;
    QSize aroundBrowser() const;
    QSize browserSize() const;
    void resizeForBrowser(QSize browser);

    QWebEngineProfile m_profile;
    const bool m_dark;
    StorePageView *m_page;
    QWebEngineView *llq = nullptr; // the browser
    QWidget *wei = nullptr; // the bar at the top
    QLabel *m_caption = nullptr;
    QWidget *weia = nullptr; // the strip at the bottom
    QProgressBar *m_bar = nullptr;
    QLabel *m_sizes = nullptr;
    QLabel *m_percent = nullptr;
    QWidget *loadimgbox = nullptr; // covers the page while it loads
    LoadingPicture *m_picture = nullptr;
    QLabel *loadt = nullptr; // what it says
};

} // namespace plum
