#pragma once

#include <QFile>

#include <optional>
#include <span>
#include <vector>

namespace plum {

// An archive opened for reading, seen through a window of bounded size.
class ArchiveFile
{
public:
    // Opens the file at a path in the system's form. A file that may not be written to is refused: archives
    // were always opened for writing too, and users of this class rely on that.
    bool open(const QString &systemPath);

    qint64 size() const { return m_size; }

    // The `size` bytes from `position` on, nothing if not all of them lie in the file or they cannot be read.
    // Valid until the next call.
    std::optional<std::span<const quint8>> view(qint64 position, qint64 size);

    // How many bytes are worth asking for at once when a lot is read in order.
    static constexpr qint64 windowSize = 256LL * 1024;

private:
    QFile m_file;
    qint64 m_size = 0;
    std::vector<quint8> m_window;
    qint64 m_windowPosition = 0;
    qint64 m_windowFilled = 0;
};

} // namespace plum
