#include "support/killed_writer.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace velmora::test {

bool killAtByte(qint64 bytes, const std::function<void()>& write) {
    const pid_t writer = fork();
    if (writer == 0) {
        std::signal(SIGXFSZ, [](int) { kill(getpid(), SIGKILL); });
        const rlimit limit{static_cast<rlim_t>(bytes), static_cast<rlim_t>(bytes)};
        setrlimit(RLIMIT_FSIZE, &limit);
        write();
        _exit(0);
    }
    int status = 0;
    return waitpid(writer, &status, 0) == writer && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

} // namespace velmora::test
