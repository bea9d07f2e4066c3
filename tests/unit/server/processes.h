#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

namespace velmora::server {

/// Running children of a process, this one by default; what has ended and was not waited for doesn't count.
[[nodiscard]] std::vector<pid_t> childrenOf(pid_t parent);
[[nodiscard]] std::vector<pid_t> children();

/// The first child of this process that there is, which is waited for.
[[nodiscard]] pid_t waitForChild();

[[nodiscard]] bool isRunning(pid_t process);

/// Waits for it; fails the test if that takes unreasonably long.
void expectEnd(pid_t process);

/// "Seccomp" → "2" and so on, from /proc/PID/status.
[[nodiscard]] std::map<std::string, std::string> statusOf(pid_t process);

/// The limit in force now of "Max cpu time" and so on, from /proc/PID/limits.
[[nodiscard]] std::string limitOf(pid_t process, const std::string& name);

} // namespace velmora::server
