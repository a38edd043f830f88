#pragma once

#include <QStringView>

#include <array>

namespace plum {

// The store window's title for each status code of the downloader.
struct DownloadText
{
    int code;
    QStringView title;
};

inline constexpr std::array<DownloadText, 9> downloadTexts{{
    {1, u"发送请求..."}, // sending the request
    {2, u"获取远程文件信息..."}, // getting information on the remote file
    {3, u"开始接收数据..."}, // data begins to arrive
    {4, u"下载被终止..."}, // the download was cut off
    {5, u"停止下载"}, // stopped
    {6, u"暂停下载"}, // paused
    {7, u"连接服务器失败"}, // the server did not give the file
    {8, u"发送请求失败"}, // the request could not be sent
    {9, u"Download completed"}, // in place of "下载完毕", which would be there for an instant
}};

// Empty for every other code.
constexpr QStringView downloadTitle(int code)
{
    for (const DownloadText &text : downloadTexts) {
        if (text.code == code)
            return text.title;
    }
    return {};
}

} // namespace plum
