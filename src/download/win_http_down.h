#pragma once

#include "download/download_status.h"
#include "transport/http_exchange.h"

#include <QElapsedTimer>
#include <QFile>
#include <QObject>

#include <chrono>

namespace plum {

class Paths;
class TextCodec;

// Downloads one address to one file and can go on after a pause, also in a later run of the program. Until
// it is complete the data is in a partial file, the target's name with ".dl"; beside it ".dl.cfg" holds the
// address that the partial file belongs to. One transfer at a time; when this object ends, both files stay.
class WinHttpDown : public QObject
{
    Q_OBJECT

public:
    WinHttpDown(const Paths &paths, TextCodec &codec, QObject *parent = nullptr);
    ~WinHttpDown() override;

    // The final name of the file, with "\"; absolute, or relative to the working folder.
    void setTarget(const QString &path) { m_target = path; }

    // What to download. Only plain HTTP: whatever does not begin with "http://" gets that put in front.
    void setUrl(const QString &url) { m_url = url; }

    // A transfer in which nothing arrives for this long has failed. 30 seconds unless set.
    void setTransferTimeout(std::chrono::milliseconds timeout) { m_timeout = timeout; }

    // A download that grows beyond so many bytes has failed, and nothing of it is kept. 1 GiB unless set; may
    // be set while it runs.
    void setLargest(qint64 bytes);

    bool isBusy() const { return m_busy; }

    // Whether the last transfer failed because more came, or would have come, than that.
    bool wasTooLarge() const { return m_wasTooLarge; }

    // Starts, or goes on where the partial file ends. Does nothing while busy.
    void GetStart();

    // Ends the transfer. The partial file stays without its companion, so nothing goes on from it.
    void GetStop();

    // Ends the transfer so that GetStart can go on with it.
    void GetPause();

Q_SIGNALS:
    void Status(plum::DownloadStatus status);

    // After each piece: 0 to 100, and three texts such as "1.50 KB"; `speed` is that of one second.
    void Progress(float percent, const QString &total, const QString &done, const QString &speed);

private:
    bool choosePartialFile();
    bool useNumberedNames();
    bool exists(const QString &path) const;
    QString storedUrl() const;
    bool send();

    void onHeaders();
    void onData(const QByteArray &piece);
    void onEnded(HttpExchange::End how);
    bool openFiles();
    bool isTooLarge() const;
    void giveUp();
    void complete();
    QString finalName() const;

    // Tells the state; false when a handler has ended this transfer or this object.
    bool tell(DownloadStatus status);
    void end(DownloadStatus status);
    void release();

    const Paths &m_paths;
    TextCodec &m_codec;
    HttpExchange m_exchange;
    std::chrono::milliseconds m_timeout{30000};
    qint64 m_largest = qint64(1) << 30; // bytes

    QString m_url;
    QString m_target;
    QString m_partialPath;
    QString m_configPath;
    double m_resumePosition = 0; // bytes
    double m_total = 0;
    double m_received = 0;
    QElapsedTimer m_sinceStart;
    QString m_speed;
    QFile m_partial;
    bool m_busy = false;
    bool m_wasTooLarge = false;
    int m_transfer = 0; // counts them
};

} // namespace plum
