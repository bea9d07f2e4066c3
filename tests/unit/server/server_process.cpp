#include "server_process.h"

#include "speech_files.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace velmora::server {

ServerProcess::ServerProcess(const std::vector<std::string>& arguments) {
    std::vector<char*> pointers{const_cast<char*>(VELMORA_SERVER_PROGRAM)};
    for (const auto& argument : arguments) {
        pointers.push_back(const_cast<char*>(argument.c_str()));
    }
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const auto redirect = [&](int descriptor, const std::string& name) {
        posix_spawn_file_actions_addopen(&actions, descriptor, (m_folder.path() / name).c_str(),
                                         O_WRONLY | O_CREAT | O_TRUNC, 0600);
    };
    redirect(STDOUT_FILENO, "output");
    redirect(STDERR_FILENO, "errors");
    const int failed =
        ::posix_spawn(&m_child, VELMORA_SERVER_PROGRAM, &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed) {
        throw std::system_error(failed, std::generic_category(), "starting the server");
    }
}

ServerProcess::~ServerProcess() {
    if (m_child > 0) {
        ::kill(m_child, SIGKILL);
        ::waitpid(m_child, nullptr, 0);
    }
}

std::string ServerProcess::waitForAddress() {
    const std::string begin = "velmora-server listens on http://";
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (std::chrono::steady_clock::now() < deadline) {
        const auto text = output();
        if (text.starts_with(begin) && text.ends_with('\n')) {
            return text.substr(begin.size(), text.size() - begin.size() - 1);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    throw std::runtime_error("the server does not start: " + errors());
}

void ServerProcess::signal(int number) const {
    ::kill(m_child, number);
}

ServerProcess::End ServerProcess::waitForEnd() {
    int status = 0;
    if (::waitpid(m_child, &status, 0) != m_child) {
        throw std::system_error(errno, std::generic_category(), "waiting for the server");
    }
    m_child = 0;
    return {.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1,
            .signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0};
}

std::string ServerProcess::output() const {
    return readFile(m_folder.path() / "output");
}

std::string ServerProcess::errors() const {
    return readFile(m_folder.path() / "errors");
}

} // namespace velmora::server
