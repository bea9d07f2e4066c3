#pragma once

#include <pulse/mainloop-api.h>

#include <chrono>
#include <functional>

namespace velmora {

class PulseConnection;

/// A single shot on the sound thread. Belongs to that thread, or to one that holds the connection's lock.
class PulseTimer {
public:
    PulseTimer(PulseConnection& connection, std::function<void()> fire);
    ~PulseTimer() { stop(); }
    PulseTimer(const PulseTimer&) = delete;
    PulseTimer& operator=(const PulseTimer&) = delete;

    /// Starts anew if it is running. The connection must have been used before.
    void start(std::chrono::microseconds delay);
    void stop();

private:
    PulseConnection& m_connection;
    std::function<void()> m_fire;
    pa_time_event* m_event = nullptr;
};

} // namespace velmora
