#include "platform/linux/x11_key_poster.h"
#include "support/desktop/key_window.h"
#include "support/desktop/physical_keyboard.h"
#include "support/desktop/wait_until.h"

#include <gmock/gmock.h>

#include <thread>

namespace velmora::test {

inline void PrintTo(const KeyWindow::Key& key, std::ostream* out) {
    *out << (key.down ? "press " : "release ") << int{key.key} << " modifiers 0x" << std::hex << key.modifiers
         << std::dec;
}

namespace {

using namespace std::chrono_literals;
using testing::Each;
using testing::Field;

constexpr xcb_keycode_t letters[] = {38, 39, 40, 41, 42, 43, 44}; // a to j
constexpr xcb_keycode_t letterV = 55;
constexpr xcb_keycode_t markKey = 198;

xcb_keycode_t letterAt(std::size_t i) {
    return letters[i % std::size(letters)];
}

std::vector<KeyWindow::Key> pressesOfLetters(std::size_t count, uint16_t modifiers) {
    std::vector<KeyWindow::Key> presses;
    for (std::size_t i = 0; i < count; ++i)
        presses.push_back({true, letterAt(i), modifiers});
    return presses;
}

// Somebody types as fast as the server takes it, and all the time paste chords are posted.
class TypingWhilePasting : public testing::Test {
protected:
    void type(const std::function<void(PhysicalKeyboard&, xcb_keycode_t)>& strike) {
        constexpr std::size_t manyLetters = 4'500;
        constexpr std::size_t manyPastes = 100;
        const auto target = m_poster.focusedTarget();
        ASSERT_TRUE(target);
        std::atomic<bool> isTyping = true;
        std::atomic<std::size_t> pastes = 0;
        struck = 0;
        std::thread user([&] {
            PhysicalKeyboard keyboard;
            for (; struck < manyLetters || pastes < manyPastes; ++struck)
                strike(keyboard, letterAt(struck));
            isTyping = false;
        });
        for (; isTyping; ++pastes)
            m_poster.postPasteChord(*target);
        user.join();

        const std::vector<KeyWindow::Key> all = typed();
        arrived.clear();
        std::vector<KeyWindow::Key> chords;
        for (const KeyWindow::Key& each : all) {
            if (each.down && each.key == letterV)
                chords.push_back(each);
            else if (each.down && std::ranges::find(letters, each.key) != std::end(letters))
                arrived.push_back(each);
        }
        std::cout << struck << " letters typed while " << pastes << " chords were posted\n";
        EXPECT_EQ(chords.size(), pastes);
        EXPECT_THAT(chords, Each(Field(&KeyWindow::Key::modifiers, XCB_MOD_MASK_CONTROL)));
    }

    std::vector<KeyWindow::Key> typed() {
        hand.tap(markKey);
        std::vector<KeyWindow::Key> all;
        EXPECT_TRUE(waitUntil([&] {
            std::ranges::copy(window.takeKeys(), std::back_inserter(all));
            return !all.empty() && all.back().key == markKey && !all.back().down;
        }));
        return all;
    }

    KeyWindow window;
    PhysicalKeyboard hand;
    std::size_t struck = 0;              // letters
    std::vector<KeyWindow::Key> arrived; // presses of letters

private:
    X11Connection m_x;
    X11KeyPoster m_poster{m_x, {}};
};

// In one test, for the window manager is too busy afterwards to give another window the focus.
TEST_F(TypingWhilePasting, LettersStayLettersAndChordsAreWhole) {
    const auto tap = [](PhysicalKeyboard& keyboard, xcb_keycode_t letter) { keyboard.tap(letter); };
    type(tap);
    EXPECT_EQ(arrived, pressesOfLetters(struck, 0));

    hand.press(key::leftShift);
    type(tap);
    hand.release(key::leftShift);
    EXPECT_EQ(arrived, pressesOfLetters(struck, XCB_MOD_MASK_SHIFT));
    EXPECT_EQ(hand.modifiers(), 0);

    // Whether a letter is a capital can't be told when Shift goes down just before a chord: it is given back
    // a moment after it, which is longer than between two keys here.
    type([](PhysicalKeyboard& keyboard, xcb_keycode_t letter) {
        keyboard.press(key::leftShift);
        keyboard.tap(letter);
        keyboard.release(key::leftShift);
    });
    for (KeyWindow::Key& each : arrived)
        each.modifiers &= ~XCB_MOD_MASK_SHIFT;
    EXPECT_EQ(arrived, pressesOfLetters(struck, 0));
    EXPECT_EQ(hand.modifiers(), 0);
}

} // namespace
} // namespace velmora::test
