#pragma once

#include <chrono>
#include <mutex>
#include <string>

namespace velmora::server {

/// A line of the log for something that a stranger can cause as often as they like: it is written at most
/// once in ten seconds, and then says how many were left out. Thread-safe.
class RareLog {
public:
    void write(const std::string& line);

private:
    std::mutex m_mutex;
    std::chrono::steady_clock::time_point m_next{};
    int m_leftOut = 0;
};

} // namespace velmora::server
