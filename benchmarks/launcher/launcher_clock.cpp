// Times other programs' windows from outside. It takes one command a line from its input, with tabs between
// the words, and answers each with one line:
//   learn NAME MS                      remembers what the screen shows; "ok"
//   press KEYS                         "ok"
//   key KEYS FROM TO MS                presses keys while the screen shows FROM; milliseconds until it shows
//   TO await FROM TO MS                   milliseconds until it shows TO start KEY FROM TO MS STDIN
//   COMMAND...  starts a program and presses KEY as soon as its window is mapped and
//                                      has the keyboard; process number, milliseconds from the start until
//                                      mapped, until ready for the key, and until the screen shows TO
// A time that does not come is answered with "never".
#include "screen_watch.h"

#include <csignal>
#include <fcntl.h>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <sys/prctl.h>
#include <unistd.h>

namespace plum {

namespace {

using Words = std::vector<std::string>;

Words wordsOf(const std::string &line)
{
    Words words;
    std::istringstream stream(line);
    for (std::string word; std::getline(stream, word, '\t');)
        words.push_back(word);
    return words;
}

double milliseconds(Clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

pid_t launch(const std::string &standardInput, const Words &command)
{
    std::vector<char *> arguments;
    for (const std::string &word : command)
        arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);
    const pid_t pid = fork();
    if (pid != 0)
        return pid;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int in = open(standardInput.c_str(), O_RDONLY);
    const int out = open("/dev/null", O_WRONLY);
    dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    dup2(out, STDERR_FILENO);
    execvp(arguments.front(), arguments.data());
    _exit(127);
}

class LauncherClock
{
public:
    std::string answer(const Words &words)
    {
        const std::string &verb = words.at(0);
        if (verb == "learn") {
            m_pictures[words.at(1)] = m_screen.learn(std::chrono::milliseconds(std::stoi(words.at(2))));
            return "ok";
        }
        if (verb == "press") {
            m_screen.press(words.at(1));
            return "ok";
        }
        if (verb == "key") {
            const Sign sign = signOf(words.at(2), words.at(3));
            const Clock::time_point pressed = m_screen.press(words.at(1));
            return since(pressed, m_screen.awaitSign(sign, patience(words.at(4))));
        }
        if (verb == "await") {
            const Clock::time_point now = Clock::now();
            return since(now, m_screen.awaitSign(signOf(words.at(1), words.at(2)), patience(words.at(3))));
        }
        if (verb == "start")
            return start(words);
        throw std::runtime_error("no command " + verb);
    }

private:
    static std::chrono::milliseconds patience(const std::string &text)
    {
        return std::chrono::milliseconds(std::stoi(text));
    }

    static std::string since(Clock::time_point start, std::optional<Clock::time_point> end)
    {
        return end ? std::to_string(milliseconds(*end - start)) : "never";
    }

    Sign signOf(const std::string &before, const std::string &after) const
    {
        return ScreenWatch::difference(m_pictures.at(before), m_pictures.at(after), m_screen.width());
    }

    std::string start(const Words &words)
    {
        // Without a picture to wait for, the program is only started and given its key.
        const bool hasSign = words.at(3) != "-";
        const Sign sign = hasSign ? signOf(words.at(2), words.at(3)) : Sign{};
        m_screen.forgetEvents();
        const Clock::time_point started = Clock::now();
        const pid_t pid = launch(words.at(5), {words.begin() + 6, words.end()});
        std::string line = std::to_string(pid);
        const auto window = m_screen.awaitWindow(patience(words.at(4)));
        if (!window)
            return line + " never never never";
        if (words.at(1) != "-")
            m_screen.press(words.at(1));
        line += ' ' + std::to_string(milliseconds(window->mapped - started));
        line += ' ' + std::to_string(milliseconds(window->ready - started));
        return line + ' ' + (hasSign ? since(started, m_screen.awaitSign(sign, patience(words.at(4)))) : "-");
    }

    ScreenWatch m_screen;
    std::map<std::string, Picture> m_pictures;
};

} // namespace

} // namespace plum

int main()
{
    std::signal(SIGCHLD, SIG_IGN);
    try {
        plum::LauncherClock clock;
        for (std::string line; std::getline(std::cin, line);)
            std::cout << clock.answer(plum::wordsOf(line)) << std::endl;
    } catch (const std::exception &error) {
        std::cerr << "launcher_clock: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
