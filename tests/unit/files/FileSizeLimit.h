#pragma once

#include <csignal>
#include <sys/resource.h>

// A full disk in small: while it lives, no file of this process grows beyond the limit, and writes fail.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : m_EarlierHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_Earlier);
        rlimit limit = m_Earlier;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_Earlier);
        std::signal(SIGXFSZ, m_EarlierHandler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_Earlier{};
    void (*m_EarlierHandler)(int);
};
