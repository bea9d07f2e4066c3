#include "app/rare_log.h"

#include "app/log.h"

#include <utility>

namespace velmora::server {

namespace {
constexpr std::chrono::seconds distance{10};
}

void RareLog::write(const std::string& line) {
    const std::scoped_lock lock(m_mutex);
    const auto now = std::chrono::steady_clock::now();
    if (now < m_next) {
        ++m_leftOut;
        return;
    }
    m_next = now + distance;
    const auto leftOut = std::exchange(m_leftOut, 0);
    log(leftOut == 0 ? line : line + " (" + std::to_string(leftOut) + " such lines before it left out)");
}

} // namespace velmora::server
