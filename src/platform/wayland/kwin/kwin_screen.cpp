#include "platform/wayland/kwin/kwin_screen.h"

#include "platform/wayland/kwin/kwin_bus.h"

#include <QDBusArgument>
#include <QDBusUnixFileDescriptor>
#include <QDeadlineTimer>
#include <QImage>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 2000; // milliseconds

class Pipe
{
public:
    Pipe()
    {
        if (pipe2(m_ends, O_CLOEXEC) != 0)
            return;
        // As much as a process may have, so that the two sides meet less often.
        constexpr int roomy = 1 << 20;
        fcntl(m_ends[0], F_SETPIPE_SZ, roomy);
    }
    ~Pipe()
    {
        close(m_ends[0]);
        closeWriter();
    }
    Q_DISABLE_COPY_MOVE(Pipe)

    int writer() const { return m_ends[1]; }
    void closeWriter()
    {
        if (m_ends[1] >= 0)
            close(std::exchange(m_ends[1], -1));
    }

    // False when the bytes have not come by the end of the pipe or of our patience.
    bool read(uchar *bytes, qsizetype count) const
    {
        const QDeadlineTimer deadline(patience);
        pollfd arrival{m_ends[0], POLLIN, 0};
        while (count > 0 && poll(&arrival, 1, static_cast<int>(deadline.remainingTime())) > 0) {
            const ssize_t got = ::read(m_ends[0], bytes, static_cast<size_t>(count));
            if (got == 0 || (got < 0 && errno != EINTR))
                return false;
            bytes += std::max<ssize_t>(got, 0);
            count -= std::max<ssize_t>(got, 0);
        }
        return count == 0;
    }

private:
    int m_ends[2]{-1, -1};
};

} // namespace

// Brings a part of the desktop to its place among the region's pixels.
bool KWinScreen::take(const QRect &part, const QRect &region)
{
    Pipe pipe;
    QVariant writer = QVariant::fromValue(QDBusUnixFileDescriptor(pipe.writer()));
    const QDBusMessage answer = m_bus.call(
        {u"org.kde.KWin"_s, u"/org/kde/KWin/ScreenShot2"_s, "org.kde.KWin.ScreenShot2"_L1}, "CaptureArea"_L1,
        {part.x(), part.y(), static_cast<uint>(part.width()), static_cast<uint>(part.height()), QVariantMap(),
            writer});
    // KWin's end of the pipe alone is left, so that its end is seen.
    writer.clear();
    pipe.closeWriter();
    if (answer.type() != QDBusMessage::ReplyMessage)
        return false;
    const auto results = qdbus_cast<QVariantMap>(answer.arguments().value(0));
    const QSize size(results.value(u"width"_s).toInt(), results.value(u"height"_s).toInt());
    const int stride = results.value(u"stride"_s).toInt();
    const auto format = static_cast<QImage::Format>(results.value(u"format"_s).toInt());
    if (size.isEmpty() || stride < size.width() || format <= QImage::Format_Invalid
        || format >= QImage::NImageFormats)
        return false;
    QImage image(size, format);
    if (image.bytesPerLine() != stride || !pipe.read(image.bits(), image.sizeInBytes()))
        return false;
    if (size != part.size())
        image = image.scaled(part.size());
    image = std::move(image).convertToFormat(QImage::Format_RGB32);
    const QPoint corner = part.topLeft() - region.topLeft();
    for (int y = 0; y < part.height(); ++y) {
        const auto *row = reinterpret_cast<const quint32 *>(image.constScanLine(y));
        const auto at = static_cast<std::ptrdiff_t>(corner.y() + y) * region.width() + corner.x();
        std::copy_n(row, part.width(), m_pixels.begin() + at);
    }
    return true;
}

Capture KWinScreen::capture(const QRect &region)
{
    if (!isWithinBounds(region) || !connection().isOpen())
        return {};
    const auto count = static_cast<std::size_t>(region.width()) * static_cast<std::size_t>(region.height());
    m_pixels.assign(count, 0);
    const QRect part = region.intersected(desktop());
    if (!part.isEmpty() && !take(part, region))
        return {};
    return {region.size(), m_pixels};
}

} // namespace plum
