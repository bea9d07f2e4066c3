#include "bare_keys.h"
#include "bare_window.h"
#include "figures.h"
#include "pass.h"
#include "running_program.h"
#include "support/desktop/physical_keyboard.h"
#include "window_user.h"

using namespace std::chrono_literals;

namespace velmora::bench {
namespace {

constexpr int popups = 20;
constexpr int starts = 20;
constexpr int openingsAStart = 3;
constexpr int searchRounds = 4;
constexpr int historyItems = 200;
constexpr int listPixels = 100'000; // of the list, which is larger: it was drawn anew

const QString bareWindow = QStringLiteral("bare window of that size");

Samples bareWindows(WindowWatch& watch, const QRect& place, bool managed, int runs) {
    Samples times;
    for (int run = 0; run < runs; ++run) {
        pass(50ms); // the last one is gone
        watch.forget();
        const auto start = Clock::now();
        const BareWindow window(place, managed);
        times.add(milliseconds(start, watch.waitForNew(place.size()).at));
    }
    return times;
}

} // namespace

std::vector<Result> measurePopup(DictationRuns&) {
    const RunningProgram program;
    WindowUser user;
    Samples shown;
    for (int run = 0; run < popups; ++run) {
        const WindowUser::Opened popup = user.openPopup();
        shown.add(popup.milliseconds);
        user.closePopup(popup);
    }
    return {{QStringLiteral("click on the tray icon to popup drawn"), QStringLiteral("ms"), shown, bareWindow,
             bareWindows(user.watch(), QRect(900, 40, 340, 320), false, popups), target::P95AtMost{80}}};
}

std::vector<Result> measureMainWindow(DictationRuns&) {
    Samples first;
    Samples later;
    Samples bare;
    for (int start = 0; start < starts; ++start) {
        const RunningProgram program(historyItems);
        WindowUser user;
        for (int opening = 0; opening < openingsAStart; ++opening) {
            const WindowUser::Opened window = user.openHistory();
            (opening == 0 ? first : later).add(window.milliseconds);
            user.closeMainWindow(window);
        }
        bare.add(bareWindows(user.watch(), QRect(100, 60, 980, 680), true, 1).median());
    }
    return {{QStringLiteral("\"История\" to its first frame, first time"), QStringLiteral("ms"), first,
             bareWindow, bare, target::P95AtMost{200}},
            {QStringLiteral("\"История\" to its first frame, later"), QStringLiteral("ms"), later, bareWindow,
             bare, target::P95AtMost{80}}};
}

std::vector<Result> measureSearch(DictationRuns&) {
    const Samples bare = bareKeys(popups);
    const RunningProgram program(historyItems);
    WindowUser user;
    const WindowUser::Opened window = user.openHistory();
    user.chord(test::key::leftControl, key::letterF);
    Samples times;
    for (int round = 0; round < searchRounds; ++round) {
        for (const xcb_keycode_t letter :
             {key::digit1, key::digit2, key::digit3, key::backspace, key::backspace, key::backspace}) {
            pass(200ms);
            user.watch().forget();
            const auto pressed = Clock::now();
            user.press(letter);
            times.add(milliseconds(pressed, user.watch().waitForDrawing(window.window, listPixels)));
        }
    }
    user.closeMainWindow(window);
    return {{QStringLiteral("a key typed into the search to the list drawn"), QStringLiteral("ms"), times,
             bareKeysName, bare, target::P95AtMost{16}}};
}

} // namespace velmora::bench
