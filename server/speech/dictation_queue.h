#pragma once

#include "speech/dictation_event.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>

namespace velmora::server {

/// Hands events from the thread that recognises to the one that holds the connection.
class DictationQueue {
public:
    void push(DictationEvent event);

    /// Empty if none comes in time.
    [[nodiscard]] std::optional<DictationEvent> pop(std::chrono::milliseconds time);

private:
    std::mutex m_mutex;
    std::condition_variable m_pushed;
    std::deque<DictationEvent> m_events;
};

} // namespace velmora::server
