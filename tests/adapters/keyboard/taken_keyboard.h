#pragma once

#include "platform/linux/x11_key_event_monitors.h"
#include "tapped_keyboard.h"

namespace velmora::test {

/// A keyboard that a test's monitors have for themselves.
class TakenKeyboard : public TappedKeyboard {
protected:
    void watch() {
        keys = keyboard.addMonitor(KeyEvent::Kind::KeyDown, keep());
        flags = keyboard.addMonitor(KeyEvent::Kind::FlagsChanged, keep());
        ASSERT_TRUE(keys && flags);
    }
    void endWatch() {
        keys.reset();
        flags.reset();
    }
    KeyEventMonitors::Handler keep() {
        return [this](const KeyEvent& event) { watched.push_back(event); };
    }
    /// What the monitors have told, as soon as there is that much of it.
    std::vector<KeyEvent> take(std::size_t count) {
        EXPECT_TRUE(waitUntil([&] { return watched.size() >= count; }));
        return std::exchange(watched, {});
    }
    /// The keyboard is everybody's again.
    static void expectFree() {
        EXPECT_TRUE(waitUntil([] { return X11KeyboardGrab::take({}) != nullptr; }));
    }

    /// Not even by the repeats of a key that is held, which would have come many times by then.
    void expectNothingTyped() {
        EXPECT_FALSE(waitUntil([this] { return typedSoFar() > 0; }, std::chrono::milliseconds(300)));
    }

    X11KeyEventMonitors keyboard;
    std::unique_ptr<KeyEventMonitor> keys;
    std::unique_ptr<KeyEventMonitor> flags;
    std::vector<KeyEvent> watched;
};

} // namespace velmora::test
