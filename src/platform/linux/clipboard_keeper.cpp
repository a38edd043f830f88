#include "platform/linux/clipboard_keeper.h"

#include "platform/linux/detached_process.h"
#include "platform/linux/without_pipe_signal.h"

#include <QDeadlineTimer>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestWait = 10'000; // milliseconds; a loaded machine starts a program late

// One end of a pipe.
class PipeEnd
{
public:
    explicit PipeEnd(int descriptor = -1)
        : m_descriptor(descriptor)
    {
    }
    ~PipeEnd() { close(); }
    Q_DISABLE_COPY_MOVE(PipeEnd)

    int descriptor() const { return m_descriptor; }
    void close()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        m_descriptor = -1;
    }

private:
    int m_descriptor;
};

bool waitFor(int descriptor, short events, const QDeadlineTimer &deadline)
{
    pollfd wanted{descriptor, events, 0};
    int ready = 0;
    do {
        ready = poll(&wanted, 1, static_cast<int>(deadline.remainingTime()));
    } while (ready < 0 && errno == EINTR);
    return ready > 0;
}

bool writeAll(int descriptor, QByteArrayView bytes, const QDeadlineTimer &deadline)
{
    const WithoutPipeSignal guard;
    fcntl(descriptor, F_SETFL, O_NONBLOCK);
    while (!bytes.isEmpty()) {
        if (!waitFor(descriptor, POLLOUT, deadline))
            return false;
        const ssize_t written = write(descriptor, bytes.data(), static_cast<size_t>(bytes.size()));
        if (written > 0)
            bytes = bytes.sliced(written);
        else if (errno != EAGAIN && errno != EINTR)
            return false;
    }
    return true;
}

} // namespace

bool keepClipboardText(const QString &keeper, const QByteArray &utf8)
{
    std::array<int, 2> text{};
    if (pipe2(text.data(), O_CLOEXEC) != 0)
        return false;
    PipeEnd textOut(text[0]);
    PipeEnd textIn(text[1]);
    std::array<int, 2> word{};
    if (pipe2(word.data(), O_CLOEXEC) != 0)
        return false;
    const PipeEnd wordOut(word[0]);
    PipeEnd wordIn(word[1]);

    const QDeadlineTimer deadline(longestWait, Qt::PreciseTimer);
    // The length tells the keeper a text that was cut off from a whole one.
    if (!startDetached({programBeside(keeper), {QByteArray::number(utf8.size())}, textOut.descriptor(),
            wordIn.descriptor()}))
        return false;
    textOut.close();
    wordIn.close();
    if (!writeAll(textIn.descriptor(), utf8, deadline))
        return false;
    textIn.close();
    // A keeper that takes longer still has the whole text and will own the clipboard all the same.
    char owns = 0;
    return !waitFor(wordOut.descriptor(), POLLIN, deadline) || read(wordOut.descriptor(), &owns, 1) == 1;
}

} // namespace plum
