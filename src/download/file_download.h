#pragma once

#include "download/download_status.h"
#include "transport/http_exchange.h"

#include <QElapsedTimer>
#include <QFile>
#include <QLockFile>
#include <QObject>

#include <memory>
#include <optional>

namespace plum {

class Paths;

// Downloads one file, over http or https, for programs of our own: unlike `WinHttpDown`, it believes nothing
// that it can verify. Until it is complete the data is in a partial file, the target's name with ".dl";
// beside it ".dl.cfg" says of which address and which version of the file it is. A later start goes on from
// there when the server says that it has the same version still, and begins anew otherwise. An existing file
// is never overwritten.
class FileDownload final : public QObject
{
    Q_OBJECT

public:
    explicit FileDownload(const Paths &paths, QObject *parent = nullptr);
    ~FileDownload() override;

    // The address to fetch, and the final name of the file, absolute and with "\".
    void setUrl(const QString &url) { m_url = url; }
    void setTarget(const QString &path) { m_target = path; }

    bool isBusy() const { return m_busy; }

    // Does nothing while busy.
    void start();

    // Ends the transfer; what has arrived stays.
    void pause();

    // What went wrong with the last transfer, in a sentence; empty when nothing did.
    QString problem() const { return m_problem; }

Q_SIGNALS:
    // One of Sending, Receiving and, as ends, Failed, Paused, BadAnswer, NotSent, NoFile and Complete.
    void Status(plum::DownloadStatus status);

    // After each piece: 0 to 100, or -1 where nobody knows how much there is; bytes; bytes in a second.
    void Progress(float percent, const QString &total, const QString &done, const QString &speed);

private:
    // What is known of a partial file.
    struct Version
    {
        QString url = {};
        QByteArray validator = {}; // a strong entity tag; empty when the server gave none
        qint64 size = -1; // of the whole file; -1 when unknown
    };

    void chooseNames();
    bool usePartial(const QString &name);
    std::optional<Version> storedVersion() const;
    bool storeVersion();
    void send();
    void onAnswer();
    bool goesOn();
    bool openPartial(bool anew);
    void onPiece(const QByteArray &piece);
    void onEnded(HttpExchange::End how);
    void complete();
    void end(DownloadStatus status, const QString &problem);
    QString system(const QString &path) const;

    const Paths &m_paths;
    HttpExchange m_exchange;
    QString m_url;
    QString m_target;
    QString m_partialPath;
    QString m_versionPath;
    Version m_version;
    std::unique_ptr<QLockFile> m_lock; // on the partial file, against another download of it
    QFile m_partial;
    qint64 m_resumedAt = 0; // bytes that were there, if the server is asked for the rest
    qint64 m_done = 0;
    qint64 m_received = 0; // of m_done, in this session
    QElapsedTimer m_sinceStart;
    QString m_speed;
    QString m_problem;
    bool m_busy = false;
};

} // namespace plum
