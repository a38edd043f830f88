#pragma once

#include <csignal>
#include <sys/resource.h>

namespace plum::test {

// For as long as this lives, no file of this process grows beyond `bytes`: what a full disk looks like to it.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_signal(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limited{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit m_before{};
    void (*m_signal)(int);
};

} // namespace plum::test
