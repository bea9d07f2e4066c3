#pragma once

#include "platform/key_event_monitor_list.h"
#include "platform/modifier_flags.h"

namespace velmora::test {

/// A keyboard on which the test types, as long as somebody watches it.
class FakeKeyEventMonitors final : public KeyEventMonitors {
public:
    [[nodiscard]] std::unique_ptr<KeyEventMonitor> addMonitor(KeyEvent::Kind kind, Handler handler) override {
        return allowed ? m_monitors.add(kind, std::move(handler)) : nullptr;
    }

    void keyDown(int keyCode, quint64 flags = 0, bool repeat = false) {
        m_monitors.send({KeyEvent::Kind::KeyDown, keyCode, flags, repeat});
    }
    void flagsChanged(quint64 flags) { m_monitors.send({KeyEvent::Kind::FlagsChanged, -1, flags, false}); }

    [[nodiscard]] std::size_t count() const { return m_monitors.count(); }

    bool allowed = true;

private:
    KeyEventMonitorList m_monitors;
};

} // namespace velmora::test
