#include "platform/x11/keyboard/guard/words.h"

#include <array>
#include <chrono>

#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

// Watches over a program that keeps the keyboard back for a moment when its hotkey is pressed. When that
// program stands still meanwhile (stopped, or held by a debugger) nobody could type any more, so this ends
// the program's connection to the X server, which lets all keys go.
//
// Standard input tells, again and again, when the program may keep keys back (words.h) and ends with it.
// Standard output is the connection itself: what the server has sent on it and the program does not read
// tells the same of a press that it never saw.
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;
using namespace plum::guard;

constexpr int words = STDIN_FILENO;
constexpr int connection = STDOUT_FILENO;

// The program says each second that it still stirs, and reads what comes at once.
constexpr auto keepingPatience = 5s;
constexpr auto readingPatience = 2s;
constexpr auto betweenLooks = 250ms;

// Whether something is so, and for how long.
struct State
{
    bool isSo = false;
    Clock::time_point since = {};
};

void note(State &state, bool isSo)
{
    if (isSo && !state.isSo)
        state.since = Clock::now();
    state.isSo = isSo;
}

bool isLongerThan(const State &state, Clock::duration patience)
{
    return state.isSo && Clock::now() - state.since > patience;
}

bool hasUnread()
{
    int bytes = 0;
    return ioctl(connection, FIONREAD, &bytes) == 0 && bytes > 0;
}

// False when the program has ended.
bool hear(State &keeping)
{
    char word = 0;
    if (read(words, &word, 1) != 1)
        return false;
    keeping = {word == keepsBack, Clock::now()};
    return true;
}

} // namespace

int main()
{
    State keeping{true, Clock::now()}; // it may have been stopped before its first word
    State unread;
    for (;;) {
        // What lies unread would end each sleep at once, so it is looked at now and then.
        std::array sources{pollfd{words, POLLIN, 0}, pollfd{unread.isSo ? -1 : connection, POLLIN, 0}};
        const auto sleep = keeping.isSo || unread.isSo
            ? static_cast<int>(std::chrono::milliseconds(betweenLooks).count())
            : -1;
        if (poll(sources.data(), sources.size(), sleep) < 0)
            return 1;
        if (sources[0].revents != 0 && !hear(keeping))
            return 0;
        if ((sources[1].revents & ~POLLIN) != 0)
            return 0; // the server has gone
        note(unread, hasUnread());
        if (isLongerThan(keeping, keepingPatience) || isLongerThan(unread, readingPatience)) {
            shutdown(connection, SHUT_RDWR);
            return 0;
        }
    }
}
