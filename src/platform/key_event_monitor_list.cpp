#include "platform/key_event_monitor_list.h"

#include <algorithm>

namespace velmora {

class KeyEventMonitorList::Monitor final : public KeyEventMonitor {
public:
    Monitor(KeyEventMonitorList& list, KeyEvent::Kind watched, KeyEventMonitors::Handler handled)
        : kind(watched)
        , handler(std::move(handled))
        , m_list(list) {}
    ~Monitor() override { m_list.remove(this); }
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;

    const KeyEvent::Kind kind;
    const KeyEventMonitors::Handler handler;

private:
    KeyEventMonitorList& m_list;
};

KeyEventMonitorList::KeyEventMonitorList(std::function<void()> onEmpty)
    : m_onEmpty(std::move(onEmpty)) {}

std::unique_ptr<KeyEventMonitor> KeyEventMonitorList::add(KeyEvent::Kind kind,
                                                          KeyEventMonitors::Handler handler) {
    auto monitor = std::make_unique<Monitor>(*this, kind, std::move(handler));
    m_monitors.push_back(monitor.get());
    return monitor;
}

void KeyEventMonitorList::send(const KeyEvent& event) const {
    const std::vector<const Monitor*> monitors = m_monitors;
    for (const Monitor* each : monitors) {
        if (std::ranges::find(m_monitors, each) == m_monitors.end() || each->kind != event.kind)
            continue;
        const KeyEventMonitors::Handler handler = each->handler; // which may end the monitor
        handler(event);
    }
}

void KeyEventMonitorList::remove(const Monitor* monitor) {
    std::erase(m_monitors, monitor);
    if (m_monitors.empty())
        m_onEmpty();
}

} // namespace velmora
