#include "platform/linux/detached_process.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace plum {

namespace {

constexpr char platformVariable[] = "QT_QPA_PLATFORM=";

// Which platform Qt uses was chosen for this program alone, unless the user's environment had it already.
bool platformWasChosenHere()
{
    QFile given(QStringLiteral("/proc/self/environ"));
    if (!given.open(QIODevice::ReadOnly))
        return false;
    const QByteArray all = '\0' + given.readAll();
    return !all.contains('\0' + QByteArray(platformVariable));
}

std::vector<char *> environmentOfOthers()
{
    const bool withoutPlatform = platformWasChosenHere();
    std::vector<char *> variables;
    for (char **variable = environ; variable && *variable; ++variable) {
        if (!withoutPlatform || !QByteArrayView(*variable).startsWith(platformVariable))
            variables.push_back(*variable);
    }
    variables.push_back(nullptr);
    return variables;
}

// Everything below runs between fork and exec, where only async-signal-safe calls are allowed.
struct Prepared
{
    const char *program;
    char *const *arguments;
    char *const *environment;
    int input;
    int output;
    int report; // where the new process tells its number and the error of its start
};

void resetSignals()
{
    struct sigaction byDefault
    {
    };
    byDefault.sa_handler = SIG_DFL;
    for (int signal = 1; signal < NSIG; ++signal)
        sigaction(signal, &byDefault, nullptr);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

void tell(int report, int value)
{
    // A report that cannot be written reads as a failed start.
    if (write(report, &value, sizeof value) != sizeof value)
        _exit(1);
}

// The three standard descriptors are replaced only after their sources are out of their range.
void arrangeDescriptors(const Prepared &prepared)
{
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    const std::array sources{fcntl(prepared.input < 0 ? nowhere : prepared.input, F_DUPFD_CLOEXEC, 3),
        fcntl(prepared.output < 0 ? nowhere : prepared.output, F_DUPFD_CLOEXEC, 3),
        fcntl(nowhere, F_DUPFD_CLOEXEC, 3)};
    for (int descriptor = 0; descriptor < static_cast<int>(sources.size()); ++descriptor)
        dup2(sources[static_cast<size_t>(descriptor)], descriptor);
    close_range(3, UINT_MAX, CLOSE_RANGE_CLOEXEC);
}

[[noreturn]] void becomeProgram(const Prepared &prepared)
{
    setsid();
    tell(prepared.report, getpid());
    resetSignals();
    arrangeDescriptors(prepared);
    execve(prepared.program, prepared.arguments, prepared.environment);
    tell(prepared.report, errno);
    _exit(1);
}

bool readInt(int descriptor, int &value)
{
    ssize_t got = 0;
    do {
        got = read(descriptor, &value, sizeof value);
    } while (got < 0 && errno == EINTR);
    return got == sizeof value;
}

} // namespace

DetachedStart startDetached(const DetachedProcess &process)
{
    const QByteArray program = QFile::encodeName(process.program);
    std::vector<char *> arguments{const_cast<char *>(program.constData())};
    for (const QByteArray &argument : process.arguments)
        arguments.push_back(const_cast<char *>(argument.constData()));
    arguments.push_back(nullptr);
    const std::vector<char *> environment = environmentOfOthers();

    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return {0, errno};
    // Away from the standard descriptors, which may be closed in this process and free to be given out.
    const int report = fcntl(ends[1], F_DUPFD_CLOEXEC, 3);
    const Prepared prepared{program.constData(), arguments.data(), environment.data(), process.standardInput,
        process.standardOutput, report};

    const pid_t between = fork();
    if (between == 0) {
        const pid_t started = fork();
        if (started == 0)
            becomeProgram(prepared);
        _exit(0);
    }
    close(ends[1]);
    close(report);
    DetachedStart start;
    if (between > 0) {
        while (waitpid(between, nullptr, 0) < 0 && errno == EINTR) { }
        int number = 0;
        if (!readInt(ends[0], number))
            start.error = EAGAIN;
        else if (!readInt(ends[0], start.error)) // closed by a successful exec
            start.process = number;
    } else {
        start.error = EAGAIN;
    }
    close(ends[0]);
    return start;
}

QString programBeside(const QString &name)
{
    return QFileInfo(QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget()).path() + u'/' + name;
}

} // namespace plum
