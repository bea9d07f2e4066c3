#pragma once

#include "platform/event_tap.h"
#include "platform/modifier_flags.h"

namespace velmora::test {

/// A keyboard on which the test types.
class FakeEventTapFactory final : public EventTapFactory {
public:
    [[nodiscard]] std::unique_ptr<EventTap> createTap(EventTapMode mode,
                                                      EventTap::Callback callback) override {
        attempts.push_back(mode);
        attempted();
        if (mode == EventTapMode::Active ? !activeAllowed : !listenOnlyAllowed)
            return nullptr;
        m_callback = std::move(callback);
        enabled = true;
        return std::make_unique<Tap>(*this);
    }

    EventVerdict keyDown(int keyCode, quint64 flags = 0) {
        return m_callback({KeyEvent::Kind::KeyDown, keyCode, flags, false});
    }
    EventVerdict keyUp(int keyCode, quint64 flags = 0) {
        return m_callback({KeyEvent::Kind::KeyUp, keyCode, flags, false});
    }
    EventVerdict flagsChanged(quint64 flags) {
        return m_callback({KeyEvent::Kind::FlagsChanged, -1, flags, false});
    }
    EventVerdict send(KeyEvent::Kind kind) { return m_callback({kind, -1, 0, false}); }

    bool activeAllowed = true;
    bool listenOnlyAllowed = true;
    std::vector<EventTapMode> attempts;
    std::function<void()> attempted = [] {};
    bool enabled = false;
    bool canBeEnabled = true;
    std::optional<KeyChord> claimed;
    FnStandIn standIn = FnStandIn::None;

private:
    class Tap final : public EventTap {
    public:
        explicit Tap(FakeEventTapFactory& keyboard)
            : m_keyboard(keyboard) {}
        [[nodiscard]] bool isEnabled() const override { return m_keyboard.enabled; }
        void setEnabled(bool on) override { m_keyboard.enabled = on && m_keyboard.canBeEnabled; }
        void claimChord(const std::optional<KeyChord>& chord) override { m_keyboard.claimed = chord; }
        void setFnStandIn(FnStandIn key) override { m_keyboard.standIn = key; }

    private:
        FakeEventTapFactory& m_keyboard;
    };

    EventTap::Callback m_callback;
};

} // namespace velmora::test
