#pragma once

#include "core/app_settings.h"
#include "foundation/main_loop.h"

#include <variant>

namespace velmora {

/// Turns key-down and key-up of the dictation hotkey into start and stop: hold to talk, double-tap to latch,
/// or press-to-toggle. The mode is read afresh at every event.
class HotkeyGestureGate {
public:
    using Command = std::function<void()>;

    HotkeyGestureGate(MainLoop& loop, const AppSettings& settings);

    Command onStart = [] {};
    Command onStop = [] {};
    MainLoop::Duration tapThreshold = std::chrono::milliseconds(220); ///< a shorter hold is a tap
    MainLoop::Duration doubleTapWindow =
        std::chrono::milliseconds(320); ///< from the first release to the second press

    void press();
    void release();
    /// What a press means in toggle mode, whatever the mode is: starts when idle, else stops.
    void toggle();

private:
    struct Idle {};
    struct Holding {
        MainLoop::TimePoint pressedAt;
    };
    struct PendingSecondTap {
        MainLoop::TimePoint firstTapAt;
    };
    struct WaitingForSecondRelease {};
    struct Latched {};
    using State = std::variant<Idle, Holding, PendingSecondTap, WaitingForSecondRelease, Latched>;

    [[nodiscard]] bool isToggleMode() const;
    void tapWindowExpired();
    void stop();

    MainLoop& m_loop;
    const AppSettings& m_settings;
    State m_state;
    Timer m_tapTimeoutTimer;
};

} // namespace velmora
