#include "speech/dictation_queue.h"

namespace velmora::server {

void DictationQueue::push(DictationEvent event) {
    const std::scoped_lock lock(m_mutex);
    m_events.push_back(std::move(event));
    m_pushed.notify_one();
}

std::optional<DictationEvent> DictationQueue::pop(std::chrono::milliseconds time) {
    std::unique_lock lock(m_mutex);
    if (!m_pushed.wait_for(lock, time, [this] { return !m_events.empty(); })) {
        return std::nullopt;
    }
    auto event = std::move(m_events.front());
    m_events.pop_front();
    return event;
}

} // namespace velmora::server
