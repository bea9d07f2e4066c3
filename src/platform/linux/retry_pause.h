#pragma once

#include <QDeadlineTimer>

#include <chrono>

namespace velmora {

/// Paces attempts at what may be away for long. The second may follow at once, for it may just be starting;
/// then each failure doubles the pause, up to a minute.
class RetryPause {
public:
    [[nodiscard]] bool isOver() const { return m_rest.hasExpired(); }

    void failed() {
        m_rest.setRemainingTime(m_next);
        m_next = std::clamp(2 * m_next, shortest, longest);
    }

private:
    static constexpr std::chrono::seconds shortest{5};
    static constexpr std::chrono::seconds longest{60};

    QDeadlineTimer m_rest;
    std::chrono::seconds m_next{0};
};

} // namespace velmora
