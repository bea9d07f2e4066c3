#include "core/hotkey_gesture_gate.h"

namespace velmora {

HotkeyGestureGate::HotkeyGestureGate(MainLoop& loop, const AppSettings& settings)
    : m_loop(loop)
    , m_settings(settings) {}

void HotkeyGestureGate::press() {
    if (isToggleMode()) {
        toggle();
        return;
    }
    m_tapTimeoutTimer.invalidate();
    if (std::holds_alternative<Idle>(m_state)) {
        // Recording begins with the press, before a tap can be told from a hold.
        m_state = Holding{m_loop.now()};
        onStart();
    } else if (std::holds_alternative<PendingSecondTap>(m_state)) {
        m_state = WaitingForSecondRelease{};
    } else if (std::holds_alternative<Latched>(m_state)) {
        stop();
    }
}

void HotkeyGestureGate::toggle() {
    m_tapTimeoutTimer.invalidate();
    if (std::holds_alternative<Idle>(m_state)) {
        m_state = Latched{};
        onStart();
    } else {
        stop();
    }
}

void HotkeyGestureGate::release() {
    if (isToggleMode())
        return;
    if (const auto* holding = std::get_if<Holding>(&m_state)) {
        if (m_loop.now() - holding->pressedAt >= tapThreshold) {
            stop();
            return;
        }
        m_state = PendingSecondTap{m_loop.now()};
        m_tapTimeoutTimer = m_loop.after(doubleTapWindow, [this] { tapWindowExpired(); });
    } else if (std::holds_alternative<WaitingForSecondRelease>(m_state)) {
        m_state = Latched{};
    }
}

void HotkeyGestureGate::tapWindowExpired() {
    if (std::holds_alternative<PendingSecondTap>(m_state))
        stop();
}

bool HotkeyGestureGate::isToggleMode() const {
    return m_settings.mode() == QLatin1String("toggle");
}

void HotkeyGestureGate::stop() {
    m_state = Idle{};
    onStop();
}

} // namespace velmora
