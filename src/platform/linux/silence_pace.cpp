#include "platform/linux/silence_pace.h"

#include <algorithm>

namespace velmora {

void SilencePace::begin(TimePoint since) {
    if (m_active)
        return;
    m_active = true;
    m_since = since;
    m_taken = 0;
}

std::int64_t SilencePace::take(TimePoint now, std::int64_t upcoming) {
    if (!m_active)
        return 0;
    const double passed = std::chrono::duration<double>(now - m_since).count();
    const auto due = static_cast<std::int64_t>(passed * m_sampleRate) - m_taken - upcoming;
    const auto taken = std::max<std::int64_t>(due, 0);
    m_taken += taken;
    return taken;
}

} // namespace velmora
