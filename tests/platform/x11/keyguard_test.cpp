#include "platform/linux/detached_process.h"
#include "platform/x11/keyboard/guard/words.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <gtest/gtest.h>

#include <array>
#include <optional>

#include <sys/socket.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// A guard with a program and a server that are the test's.
class Guard
{
public:
    explicit Guard(std::optional<char> word)
    {
        socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, m_words.data());
        socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, m_connection.data());
        EXPECT_TRUE(startDetached({programBeside(u"plum-keyguard"_s), {}, m_words[1], m_connection[1]}));
        if (word)
            write(m_words[0], &*word, 1);
    }

    ~Guard()
    {
        for (const int end : {m_words[0], m_words[1], m_connection[0], m_connection[1]})
            ::close(end);
    }

    Q_DISABLE_COPY_MOVE(Guard)

    void sendFromServer() const { write(m_connection[0], "x", 1); }

    bool hasEndedTheConnection() const
    {
        char byte = 0;
        return recv(m_connection[0], &byte, 1, MSG_DONTWAIT | MSG_PEEK) == 0;
    }

private:
    std::array<int, 2> m_words{};
    std::array<int, 2> m_connection{};
};

} // namespace

TEST(KeyguardTest, endsTheConnectionOfAProgramThatMayKeepKeysBackAndNoLongerStirs)
{
    int argumentCount = 1;
    std::array name{'x', '1', '1', '_', 't', 'e', 's', 't', 's', '\0'};
    std::array arguments{name.data(), static_cast<char *>(nullptr)};
    const QCoreApplication application(argumentCount, arguments.data());

    const Guard stoppedBeforeItsFirstWord({});
    const Guard stoppedWithTheKeys(guard::keepsBack);
    const Guard stoppedBeforeThePress(guard::letsGo);
    stoppedBeforeThePress.sendFromServer();
    const Guard idle(guard::letsGo);

    const QDeadlineTimer patience(60'000); // only a test that fails waits so long
    const auto allEnded = [&] {
        return stoppedBeforeItsFirstWord.hasEndedTheConnection() && stoppedWithTheKeys.hasEndedTheConnection()
            && stoppedBeforeThePress.hasEndedTheConnection();
    };
    while (!allEnded() && !patience.hasExpired())
        QThread::msleep(20);
    EXPECT_TRUE(stoppedBeforeItsFirstWord.hasEndedTheConnection());
    EXPECT_TRUE(stoppedWithTheKeys.hasEndedTheConnection());
    EXPECT_TRUE(stoppedBeforeThePress.hasEndedTheConnection());
    EXPECT_FALSE(idle.hasEndedTheConnection());
}

} // namespace plum
