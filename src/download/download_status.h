#pragma once

namespace plum {

// The states of a download. The numbers are what the downloader's `Status` has always told.
enum class DownloadStatus : int {
    Sending = 1,
    HeadersArrived = 2,
    Receiving = 3,
    Failed = 4,
    Stopped = 5,
    Paused = 6,
    BadAnswer = 7,
    NotSent = 8,
    Complete = 9,
    NoFile = 10, // a file could not be made
};

// The first three are on the way, all others are ends.
constexpr bool isOnTheWay(DownloadStatus status)
{
    return status <= DownloadStatus::Receiving;
}

} // namespace plum
