#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace velmora::test {

/// Another process. It goes with the object, if it isn't killed before.
class OtherProcess {
public:
    /// Returns when `work`, which runs there, has called the function given to it, or has come to its end.
    template<typename Work>
    explicit OtherProcess(const Work& work) {
        int done[2];
        if (::pipe(done) != 0 || (m_pid = ::fork()) < 0)
            throw std::runtime_error("no other process");
        if (m_pid == 0) {
            work([&] {
                ::close(done[0]);
                ::close(done[1]);
            });
            std::_Exit(0);
        }
        ::close(done[1]);
        char end = 0;
        while (::read(done[0], &end, 1) > 0) {
        }
        ::close(done[0]);
    }
    ~OtherProcess() { kill(); }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    void kill() {
        if (m_pid > 0) {
            ::kill(m_pid, SIGKILL);
            ::waitpid(m_pid, nullptr, 0);
        }
        m_pid = 0;
    }

private:
    pid_t m_pid = 0;
};

} // namespace velmora::test
