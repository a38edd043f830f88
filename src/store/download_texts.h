#pragma once

#include "download/download_status.h"

#include <QCoreApplication>
#include <QStringView>

#include <array>

namespace plum {

// The store window's title for each state of the downloader.
struct DownloadText
{
    DownloadStatus status;
    QStringView title;
    const char *meaning; // in English, for a session in another language
};

inline constexpr std::array<DownloadText, 9> downloadTexts{{
    {DownloadStatus::Sending, u"发送请求...", QT_TRANSLATE_NOOP("plum::DownloadText", "sending the request")},
    {DownloadStatus::HeadersArrived, u"获取远程文件信息...",
        QT_TRANSLATE_NOOP("plum::DownloadText", "getting information on the file")},
    {DownloadStatus::Receiving, u"开始接收数据...", QT_TRANSLATE_NOOP("plum::DownloadText", "data arrives")},
    {DownloadStatus::Failed, u"下载被终止...",
        QT_TRANSLATE_NOOP("plum::DownloadText", "the download was cut off")},
    {DownloadStatus::Stopped, u"停止下载",
        QT_TRANSLATE_NOOP("plum::DownloadText", "the download was stopped")},
    {DownloadStatus::Paused, u"暂停下载", QT_TRANSLATE_NOOP("plum::DownloadText", "the download pauses")},
    {DownloadStatus::BadAnswer, u"连接服务器失败",
        QT_TRANSLATE_NOOP("plum::DownloadText", "the server did not give the file")},
    {DownloadStatus::NotSent, u"发送请求失败",
        QT_TRANSLATE_NOOP("plum::DownloadText", "the request could not be sent")},
    {DownloadStatus::Complete, u"Download completed",
        ""}, // in place of "下载完毕", which would be there for an instant
}};

// Empty for every other state.
constexpr QStringView downloadTitle(DownloadStatus status)
{
    for (const DownloadText &text : downloadTexts) {
        if (text.status == status)
            return text.title;
    }
    return {};
}

// What a title means, in the language of the session; empty where the title says it in that language itself.
inline QString meaningOf(QStringView title)
{
    for (const DownloadText &text : downloadTexts) {
        if (text.title != title || *text.meaning == 0)
            continue;
        const QString meaning = QCoreApplication::translate("plum::DownloadText", text.meaning);
        return meaning == title ? QString() : meaning;
    }
    return {};
}

} // namespace plum
