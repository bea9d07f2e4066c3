#pragma once

#include "platform/linux/x11_connection.h"
#include "samples.h"

#include <mutex>
#include <thread>

namespace velmora::bench {

/// Sees from outside when the application in front has read a selection: it then deletes the property on its
/// window in which the owner left the answer.
class ReadWatch {
public:
    /// Watches the windows that the application in front has now.
    ReadWatch();
    ReadWatch(const ReadWatch&) = delete;
    ReadWatch& operator=(const ReadWatch&) = delete;

    /// The times at which it took an answer, of whatever kind, in their order.
    [[nodiscard]] std::vector<Clock::time_point> answersTaken() const;

private:
    void selectEvents(xcb_window_t window, uint32_t client);
    void watch(const std::stop_token& stop);

    X11Connection m_x; // the thread's, once it runs
    const xcb_atom_t m_property = m_x.atom("GDK_SELECTION");
    mutable std::mutex m_mutex; // guards m_taken
    std::vector<Clock::time_point> m_taken;
    std::jthread m_thread;
};

} // namespace velmora::bench
