#pragma once

#include "look/borderless_window.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMenu>
#include <QUrl>

#include <memory>

class QLabel;
class QLayout;
class QProgressBar;
class QPushButton;

namespace plum {

// The store window `webbox`: borderless, its content below a bar that moves the window, a strip with the
// progress of a download below the content.
class StoreForm : public BorderlessWindow
{
    Q_OBJECT

public:
    StoreForm();

    virtual void showAddress(const QUrl &address) = 0;
    virtual void writePage(const QString &html) = 0;
    virtual void clearPage() = 0;
    virtual void setLoadingVisible(bool visible) = 0;
    virtual void bringUp();

    // The window is called `text`; its bar says what that means, too.
    void setCaption(const QString &text, const QString &meaning = {});

    // Says, beside pages of the store, that nobody vouches for what is in it.
    void tellUnsigned();

    void setProgress(const QJsonObject &fields);
    void forgetProgress(); // of an earlier download

    // Which apps are installed, an object each: keyword, version, newest. The user can have each anew.
    void setApps(const QJsonArray &apps);

    // Offers to try an installation again that has failed; empty for none.
    void setFailed(const QString &keyword);

    void setBrowserWidth(int pixels);
    void setBrowserHeight(int pixels);
    void setWindowHeight(int pixels);

    // The layout: the window takes the browser's size and what is around it, in the middle of the screen.
    void Command1_Click();

Q_SIGNALS:
    void closeRequested();
    void completed();
    void packageFollowed(const QUrl &link);
    void outsideOpened(const QUrl &address);
    void anewRequested(const QString &keyword);
    void retryRequested();

protected:
    static constexpr QSize usualBrowserSize{1000, 584};

    // Lays the window out around its content. Called once.
    void build(QLayout *content);

    // What the window is called while the launcher has no caption for it.
    void setUsualCaption(const QString &text);

    void closeEvent(QCloseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    void applyStyle();
    void showCaption();
    void showFailed();
    QWidget *buildBar();
    QWidget *buildStrip();
    Qt::Edges edgesAt(QPoint point) const;
    QSize aroundBrowser() const;
    QSize browserSize() const;
    void resizeForBrowser(QSize browser);

    QString m_usualCaption;
    QString m_givenCaption;
    QString m_meaning;
    QWidget *wei = nullptr; // the bar at the top
    QLabel *m_caption = nullptr;
    QLabel *m_unsigned = nullptr;
    bool m_isUnsigned = false;
    QWidget *weia = nullptr; // the strip at the bottom
    QProgressBar *m_bar = nullptr;
    QLabel *m_sizes = nullptr;
    QLabel *m_percent = nullptr;
    QPushButton *m_installed = nullptr; // opens the menu of the installed apps
    QMenu m_apps;
    QString m_failed; // what can be tried again
    QPushButton *m_again = nullptr;
};

// The form that this build has.
std::unique_ptr<StoreForm> makeStoreForm(const QUrl &downloadBase);

} // namespace plum
