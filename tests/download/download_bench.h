#pragma once

#include "download/byte_server.h"
#include "download/win_http_down.h"
#include "platform/recording/recording_platform.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace plum::testing {

// A downloader, the server it talks to and the folder it writes to.
class DownloadBench
{
public:
    DownloadBench() { renew(); }

    // Another downloader, as in the next run of the program.
    void renew()
    {
        downloader = std::make_unique<WinHttpDown>(m_paths, m_codec);
        QObject::connect(downloader.get(), &WinHttpDown::Status,
            [this](DownloadStatus status) { codes += static_cast<int>(status); });
        QObject::connect(downloader.get(), &WinHttpDown::Progress,
            [this](float percent, const QString &total, const QString &done, const QString &speed) {
                percents += percent;
                texts = {total, done, speed};
            });
        downloader->setTarget(QString(folder.filePath(QStringLiteral("a.wfp"))).replace(u'/', u'\\'));
        downloader->setUrl(server.url(QStringLiteral("a.wfp")));
    }

    bool waitFor(const std::function<bool()> &condition)
    {
        QDeadlineTimer deadline(60000);
        while (!condition() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        return condition();
    }

    // Starts and waits for the end; the codes in between are the result.
    QList<int> run()
    {
        codes.clear();
        downloader->GetStart();
        EXPECT_TRUE(waitFor([this] { return !downloader->isBusy(); }));
        return codes;
    }

    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }

    std::optional<QByteArray> content(const QString &name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
    }

    void write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder;
    ByteServer server;
    QList<int> codes;
    QList<float> percents;
    QStringList texts; // total, done, speed

private:
    recording::RecordingPaths m_paths;
    recording::RecordingTextCodec m_codec;

public:
    std::unique_ptr<WinHttpDown> downloader;
};

inline const QList<int> completed{1, 2, 3, 9};

inline QByteArray ok(const QByteArray &body)
{
    return httpAnswer("200 OK", {"Content-Length: " + QByteArray::number(body.size())}, body);
}

inline QByteArray noise(qsizetype size)
{
    QRandomGenerator random(9);
    QByteArray bytes(size, '\0');
    for (char &byte : bytes)
        byte = static_cast<char>(random.generate());
    return bytes;
}

} // namespace plum::testing
