#pragma once

#include "platform/key_event_monitors.h"

#include <vector>

namespace velmora {

/// The live monitors of a keyboard, in the order they were made. Must outlive them.
class KeyEventMonitorList {
public:
    /// Called when the last one ends.
    explicit KeyEventMonitorList(std::function<void()> onEmpty = [] {});

    [[nodiscard]] std::unique_ptr<KeyEventMonitor> add(KeyEvent::Kind kind,
                                                       KeyEventMonitors::Handler handler);
    /// Calls those of the event's kind that haven't ended by their turn. A handler may end any of them.
    void send(const KeyEvent& event) const;
    [[nodiscard]] std::size_t count() const { return m_monitors.size(); }

private:
    class Monitor;

    void remove(const Monitor* monitor);

    std::vector<const Monitor*> m_monitors;
    const std::function<void()> m_onEmpty;
};

} // namespace velmora
