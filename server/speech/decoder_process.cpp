#include "speech/decoder_process.h"

#include "speech/decoder_child.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace velmora::server {

namespace {

/// What the child is started with. It gets its input and its output, and neither our log nor our other files
/// (libraries leave some open to children), nor our environment, nor signals that are kept for one thread.
class Surroundings {
public:
    Surroundings(int input, int output) {
        ::posix_spawn_file_actions_init(&m_files);
        ::posix_spawn_file_actions_adddup2(&m_files, input, STDIN_FILENO);
        ::posix_spawn_file_actions_adddup2(&m_files, output, STDOUT_FILENO);
        ::posix_spawn_file_actions_addopen(&m_files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        ::posix_spawn_file_actions_addclosefrom_np(&m_files, STDERR_FILENO + 1);
        sigset_t signals;
        ::posix_spawnattr_init(&m_attributes);
        sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&m_attributes, &signals);
        ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK);
    }
    ~Surroundings() {
        ::posix_spawn_file_actions_destroy(&m_files);
        ::posix_spawnattr_destroy(&m_attributes);
    }
    Surroundings(const Surroundings&) = delete;
    Surroundings& operator=(const Surroundings&) = delete;

    [[nodiscard]] pid_t start() const {
        // The very program that runs, even if an update has put another in its place.
        const std::string program = "/proc/self/exe";
        std::string name = "velmora-server";
        std::string argument = decodeArgument;
        char* const arguments[] = {name.data(), argument.data(), nullptr};
        char* const environment[] = {nullptr};
        pid_t child = 0;
        if (const int failed =
                ::posix_spawn(&child, program.c_str(), &m_files, &m_attributes, arguments, environment)) {
            throw std::system_error(failed, std::generic_category(), "starting the decoder");
        }
        return child;
    }

private:
    posix_spawn_file_actions_t m_files{};
    posix_spawnattr_t m_attributes{};
};

} // namespace

DecoderProcess::DecoderProcess(int descriptor) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    m_output = ends[0];
    try {
        m_child = Surroundings(descriptor, ends[1]).start();
    } catch (...) {
        ::close(ends[0]);
        ::close(ends[1]);
        throw;
    }
    ::close(ends[1]);
}

DecoderProcess::~DecoderProcess() {
    static_cast<void>(end());
    ::close(m_output);
}

bool DecoderProcess::wait(std::chrono::milliseconds time) const {
    pollfd output{m_output, POLLIN, 0};
    return ::poll(&output, 1, static_cast<int>(time.count())) > 0;
}

void DecoderProcess::allow(std::chrono::seconds processorTime) const {
    rlimit limits{};
    if (::prlimit(m_child, RLIMIT_CPU, nullptr, &limits) == 0) {
        limits.rlim_cur = std::min(static_cast<rlim_t>(processorTime.count()), limits.rlim_max);
        ::prlimit(m_child, RLIMIT_CPU, &limits, nullptr);
    }
}

void DecoderProcess::kill() const {
    if (m_child > 0) {
        ::kill(m_child, SIGKILL);
    }
}

std::optional<int> DecoderProcess::end() {
    if (m_child == 0) {
        return std::nullopt;
    }
    kill();
    int status = 0;
    while (::waitpid(m_child, &status, 0) < 0 && errno == EINTR) {
    }
    m_child = 0;
    return status;
}

} // namespace velmora::server
