#include "bare_keys.h"

#include "pass.h"
#include "support/desktop/key_window.h"
#include "support/desktop/physical_keyboard.h"

using namespace std::chrono_literals;

namespace velmora::bench {

Samples bareKeys(int runs) {
    test::PhysicalKeyboard keyboard;
    test::KeyWindow window;
    Samples times;
    for (int run = 0; run < runs; ++run) {
        const auto pressed = Clock::now();
        keyboard.press(test::key::leftShift);
        while (window.takeKeys().empty()) {
        }
        times.add(milliseconds(pressed, Clock::now()));
        keyboard.release(test::key::leftShift);
        pass(20ms);
        (void)window.takeKeys();
    }
    return times;
}

} // namespace velmora::bench
