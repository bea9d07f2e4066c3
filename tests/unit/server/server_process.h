#pragma once

#include "test_folder.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace velmora::server {

/// The server's program as a child, its output in files. Killed at the end at the latest.
class ServerProcess {
public:
    struct End {
        /// Exit code, or -1 if a signal ended it.
        int code = -1;
        int signal = 0;
    };

    explicit ServerProcess(const std::vector<std::string>& arguments);
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    /// "127.0.0.1:PORT" from the line that says it is ready. Fails with std::runtime_error if that doesn't
    /// come.
    std::string waitForAddress();

    void signal(int number) const;
    End waitForEnd();

    [[nodiscard]] std::string output() const;
    [[nodiscard]] std::string errors() const;

private:
    TestFolder m_folder;
    pid_t m_child = 0;
};

} // namespace velmora::server
