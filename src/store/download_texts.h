#pragma once

#include "download/download_status.h"

#include <QStringView>

#include <array>

namespace plum {

// The store window's title for each state of the downloader.
struct DownloadText
{
    DownloadStatus status;
    QStringView title;
};

inline constexpr std::array<DownloadText, 9> downloadTexts{{
    {DownloadStatus::Sending, u"发送请求..."}, // sending the request
    {DownloadStatus::HeadersArrived, u"获取远程文件信息..."}, // getting information on the remote file
    {DownloadStatus::Receiving, u"开始接收数据..."}, // data begins to arrive
    {DownloadStatus::Failed, u"下载被终止..."}, // the download was cut off
    {DownloadStatus::Stopped, u"停止下载"}, // stopped
    {DownloadStatus::Paused, u"暂停下载"}, // paused
    {DownloadStatus::BadAnswer, u"连接服务器失败"}, // the server did not give the file
    {DownloadStatus::NotSent, u"发送请求失败"}, // the request could not be sent
    {DownloadStatus::Complete,
        u"Download completed"}, // in place of "下载完毕", which would be there for an instant
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

} // namespace plum
