#pragma once

#include <sys/resource.h>

#include <csignal>
#include <stdexcept>

namespace velmora::test {

/// Lets no file of this process grow beyond so many bytes. As on a disk that fills up, a write that goes
/// beyond is cut off and the next one refused; and unlike a small disk, every user may have it anywhere.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        const auto changed = [&] {
            rlimit limit = m_before;
            limit.rlim_cur = bytes;
            return setrlimit(RLIMIT_FSIZE, &limit) == 0;
        };
        if (getrlimit(RLIMIT_FSIZE, &m_before) != 0 || !changed())
            throw std::runtime_error("no limit on the size of files");
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

} // namespace velmora::test
