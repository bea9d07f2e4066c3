#pragma once

#include <chrono>
#include <functional>

namespace velmora::server {

/// Where stores and limits take the time from, so that tests can move it.
using Clock = std::function<std::chrono::system_clock::time_point()>;

/// The same for what lasts no longer than the process, and must not care when somebody sets the clock.
using SteadyClock = std::function<std::chrono::steady_clock::time_point()>;

} // namespace velmora::server
