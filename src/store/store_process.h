#pragma once

#include "store/store_view.h"

#include <QJsonObject>
#include <QProcess>
#include <QTimer>

#include <chrono>
#include <utility>
#include <vector>

namespace plum {

struct WindowMessage;

// The store window in a process of its own. The process starts when a page is first shown, so that nobody
// pays for the browser engine before, and ends when the window has been hidden for a while, which gives all
// of its memory back. A crash of a page's process stays there too: the next page starts a new one.
class StoreProcess final : public StoreView
{
    Q_OBJECT

public:
    struct Options
    {
        QString program; // the window's executable
        QUrl downloadBase; // links below it lead to packages
        bool isSigned = true; // otherwise the window says so
        std::chrono::milliseconds keptHidden = std::chrono::minutes(1);
    };

    explicit StoreProcess(Options options);
    ~StoreProcess() override;
    Q_DISABLE_COPY_MOVE(StoreProcess)

    // The window's executable beside this program's own.
    static QString besideThisProgram();

    bool isAvailable() const override;
    void showWindow() override;
    void hideWindow() override;
    void setCaption(const QString &text) override;
    void setWindowHeight(int pixels) override;
    void navigate(const QUrl &address) override;
    void writePage(const QString &html) override;
    void clearPage() override;
    void setBrowserWidth(int pixels) override;
    void setBrowserHeight(int pixels) override;
    void layOut() override;
    void setLoadingVisible(bool visible) override;
    void setProgress(const DownloadProgress &progress) override;
    void setApps(const std::vector<StoreApp> &apps) override;
    void setFailed(const QString &keyword) override;

    // The process's number, 0 while there is none.
    qint64 processId() const { return m_process.processId(); }

private:
    // Sends to a running process; otherwise keeps the newest message of the verb for the next start.
    void send(QLatin1StringView verb, const QJsonObject &fields = {});
    void showPage(QLatin1StringView verb, const QJsonObject &fields);
    bool isListening() const;
    void startIfNeeded();
    void readLines();
    void handle(const WindowMessage &message);
    void processEnded();
    void end();

    const Options m_options;
    QProcess m_process;
    QTimer m_hidden;
    std::vector<std::pair<QLatin1StringView, QJsonObject>> m_kept; // what a process must know when it starts
    bool m_shown = false;
    bool m_wanted = false; // start again after the end that is under way
    bool m_ending = false;
};

} // namespace plum
