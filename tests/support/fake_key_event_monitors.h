#pragma once

#include "platform/key_event_monitors.h"
#include "platform/modifier_flags.h"

#include <algorithm>
#include <vector>

namespace velmora::test {

/// A keyboard on which the test types, as long as somebody watches it.
class FakeKeyEventMonitors final : public KeyEventMonitors {
public:
    [[nodiscard]] std::unique_ptr<KeyEventMonitor> addMonitor(KeyEvent::Kind kind, Handler handler) override {
        if (!allowed)
            return nullptr;
        return std::make_unique<Monitor>(*this, kind, std::move(handler));
    }

    void keyDown(int keyCode, quint64 flags = 0, bool repeat = false) {
        send({KeyEvent::Kind::KeyDown, keyCode, flags, repeat});
    }
    void flagsChanged(quint64 flags) { send({KeyEvent::Kind::FlagsChanged, -1, flags, false}); }

    [[nodiscard]] std::size_t count() const { return m_monitors.size(); }

    bool allowed = true;

private:
    class Monitor final : public KeyEventMonitor {
    public:
        Monitor(FakeKeyEventMonitors& keyboard, KeyEvent::Kind watched, Handler handled)
            : kind(watched)
            , handler(std::move(handled))
            , m_keyboard(keyboard) {
            m_keyboard.m_monitors.push_back(this);
        }
        ~Monitor() override { std::erase(m_keyboard.m_monitors, this); }
        Monitor(const Monitor&) = delete;
        Monitor& operator=(const Monitor&) = delete;

        const KeyEvent::Kind kind;
        const Handler handler;

    private:
        FakeKeyEventMonitors& m_keyboard;
    };

    void send(const KeyEvent& event) {
        const std::vector<Monitor*> monitors = m_monitors;
        for (Monitor* each : monitors) {
            if (std::ranges::find(m_monitors, each) == m_monitors.end() || each->kind != event.kind)
                continue;
            const Handler handler = each->handler; // which may end the monitor
            handler(event);
        }
    }

    std::vector<Monitor*> m_monitors;
};

} // namespace velmora::test
