#pragma once

#include "platform/linux/x11_chord_post.h"
#include "platform/linux/x11_event_tap_factory.h"
#include "platform/modifier_flags.h"
#include "support/desktop/key_window.h"
#include "support/desktop/physical_keyboard.h"
#include "support/desktop/wait_until.h"

#include <QProcess>

#include <gmock/gmock.h>

namespace velmora {

inline void PrintTo(const KeyEvent& event, std::ostream* out) {
    constexpr const char* kinds[] = {"KeyDown", "KeyUp", "FlagsChanged", "byTimeout", "byUserInput", "Other"};
    *out << kinds[static_cast<int>(event.kind)] << ' ' << event.keyCode << " flags 0x" << std::hex
         << event.flags << std::dec << (event.repeat ? " repeat" : "");
}

namespace test {

inline void PrintTo(const KeyWindow::Key& key, std::ostream* out) {
    *out << (key.down ? "press " : "release ") << int{key.key} << " modifiers 0x" << std::hex << key.modifiers
         << std::dec;
}

inline KeyEvent keyDown(int keyCode, quint64 flags = 0) {
    return {KeyEvent::Kind::KeyDown, keyCode, flags, false};
}
inline KeyEvent keyUp(int keyCode, quint64 flags = 0) {
    return {KeyEvent::Kind::KeyUp, keyCode, flags, false};
}
inline KeyEvent flagsChanged(int keyCode, quint64 flags) {
    return {KeyEvent::Kind::FlagsChanged, keyCode, flags, false};
}

/// Makes held keys repeat every 10 ms, beginning after 50.
class FastRepeat {
public:
    FastRepeat() {
        xset({QStringLiteral("r"), QStringLiteral("rate"), QStringLiteral("50"), QStringLiteral("100")});
    }
    ~FastRepeat() { xset({QStringLiteral("r"), QStringLiteral("rate")}); }
    FastRepeat(const FastRepeat&) = delete;
    FastRepeat& operator=(const FastRepeat&) = delete;

private:
    static void xset(const QStringList& arguments) { QProcess::execute(QStringLiteral("xset"), arguments); }
};

/// Types as programs do.
class Program {
public:
    void press(xcb_keycode_t key) { post(XCB_KEY_PRESS, key); }
    void release(xcb_keycode_t key) { post(XCB_KEY_RELEASE, key); }
    void tap(xcb_keycode_t key) {
        press(key);
        release(key);
    }

private:
    void post(uint8_t kind, xcb_keycode_t key) {
        fakeKey(m_x, kind, key);
        [[maybe_unused]] const QByteArray answer = m_x.atomName(XCB_ATOM_STRING);
    }

    X11Connection m_x;
};

/// A hand on the keyboard, a tap that listens, and a window that is typed into.
class TappedKeyboard : public testing::Test {
protected:
    /// The key whose arrival tells that everything before it has arrived.
    static constexpr xcb_keycode_t markKey = 198;
    static constexpr int markKeyCode = 90;

    void listen(EventTapMode mode = EventTapMode::Active) {
        X11EventTapFactory factory;
        tap = factory.createTap(mode, [this](const KeyEvent& event) {
            events.push_back(event);
            return EventVerdict::Pass;
        });
        ASSERT_TRUE(tap);
    }

    /// What the tap has told since it was last asked.
    std::vector<KeyEvent> heard() {
        settle();
        return std::exchange(events, {});
    }

    /// What the window got since it was last asked.
    std::vector<KeyWindow::Key> typed() {
        settle();
        return std::exchange(windowKeys, {});
    }

    /// How many keys have reached the window by now.
    std::size_t typedSoFar() {
        const std::vector<KeyWindow::Key> more = window.takeKeys();
        windowKeys.insert(windowKeys.end(), more.begin(), more.end());
        return windowKeys.size();
    }

    KeyWindow window;
    PhysicalKeyboard hand;
    std::unique_ptr<EventTap> tap;
    std::vector<KeyEvent> events;

private:
    // Twice: what the tap passes on to the window itself comes after the first mark.
    void settle() {
        for (int i = 0; i < 2; ++i) {
            hand.tap(markKey);
            EXPECT_TRUE(waitUntil([this] { return markHasReachedTap(); })) << "the tap heard nothing";
            std::erase_if(events, [](const KeyEvent& event) { return event.keyCode == markKeyCode; });
        }
        EXPECT_TRUE(waitUntil([this] { return markHasReachedWindow(); })) << "the window got nothing";
        std::erase_if(windowKeys, [](const KeyWindow::Key& key) { return key.key == markKey; });
    }

    bool markHasReachedTap() const {
        return !tap || !tap->isEnabled() ||
               (!events.empty() && events.back().keyCode == markKeyCode &&
                events.back().kind == KeyEvent::Kind::KeyUp);
    }
    bool markHasReachedWindow() {
        return typedSoFar() > 0 && windowKeys.back().key == markKey && !windowKeys.back().down;
    }

    std::vector<KeyWindow::Key> windowKeys;
};

} // namespace test
} // namespace velmora
