#pragma once

#include "download/file_download.h"
#include "helpers/download/download_request.h"

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

namespace plum {

// The window of one download: how far it is and how fast, and a way to end it. Ending keeps what has arrived;
// the same download goes on from there the next time.
class DownloadWindow final : public QWidget
{
    Q_OBJECT

public:
    DownloadWindow(const DownloadRequest &request, Paths &paths);

    void start();
    bool isComplete() const { return m_complete; }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void showStatus(DownloadStatus status);
    void showProgress(float percent, const QString &total, const QString &done, const QString &speed);
    void endOrClose();
    void useTheme();
    void makeRoom();

    DownloadRequest m_request;
    Paths &m_paths;
    FileDownload m_download;
    bool m_complete = false;

    QLabel *m_state;
    QProgressBar *m_bar;
    QLabel *m_figures;
    QPushButton *m_again;
    QPushButton *m_end;
};

} // namespace plum
