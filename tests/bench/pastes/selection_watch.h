#pragma once

#include "platform/linux/x11_connection.h"
#include "samples.h"

#include <mutex>
#include <thread>

namespace velmora::bench {

/// Sees from outside when the program in front works with a selection: its owner writes an answer into a
/// property of one of the program's windows, and the program deletes it.
class SelectionWatch {
public:
    /// Watches the windows that the program in front has now.
    SelectionWatch();
    SelectionWatch(const SelectionWatch&) = delete;
    SelectionWatch& operator=(const SelectionWatch&) = delete;

    /// When that happened last.
    [[nodiscard]] Clock::time_point last() const;

private:
    void selectEvents(xcb_window_t window, uint32_t client);
    [[nodiscard]] bool isOfAnAnswer(xcb_atom_t property);
    void watch(const std::stop_token& stop);

    X11Connection m_x; // the thread's, once it runs
    QHash<xcb_atom_t, bool> m_answers;
    mutable std::mutex m_mutex; // guards m_last
    Clock::time_point m_last;
    std::jthread m_thread;
};

} // namespace velmora::bench
