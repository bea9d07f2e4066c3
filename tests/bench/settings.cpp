#include "bare_keys.h"
#include "figures.h"
#include "foundation/user_defaults.h"
#include "pass.h"
#include "running_program.h"
#include "window_user.h"

using namespace std::chrono_literals;

namespace velmora::bench {
namespace {

constexpr int starts = 5;
constexpr int openingsAStart = 4;
constexpr int historyItems = 200;
constexpr int sheetPixels = 300'000;   // of the sheet, which is larger
constexpr int contentPixels = 150'000; // of a tab's
constexpr int sliderPixels = 200;      // of its knob and its number
constexpr int tabsToTheSlider = 6;     // capture, quick choice, Fn's key, mode, microphone
constexpr int sliderRounds = 3;
constexpr int sliderSteps = 10;

/// From a key press to so much of the window drawn, in milliseconds.
double fromKey(WindowUser& user, const WindowUser::Opened& window, int pixels,
               const std::function<void()>& press) {
    pass(400ms); // whatever the last one has begun is over
    user.watch().forget();
    const auto pressed = Clock::now();
    press();
    return milliseconds(pressed, user.watch().waitForDrawing(window.window, pixels));
}

void openSettings(WindowUser& user) {
    user.chord(test::key::leftControl, key::comma);
}

void nextTab(WindowUser& user) {
    user.chord(test::key::leftControl, key::pageDown);
}

} // namespace

std::vector<Result> measureSettings(DictationRuns&) {
    Samples sheet;
    Samples recordingTab;
    Samples bare;
    for (int start = 0; start < starts; ++start) {
        const RunningProgram program(historyItems);
        WindowUser user;
        const WindowUser::Opened window = user.openHistory();
        for (int opening = 0; opening < openingsAStart; ++opening) {
            sheet.add(fromKey(user, window, sheetPixels, [&] { openSettings(user); }));
            recordingTab.add(fromKey(user, window, contentPixels, [&] { nextTab(user); }));
            // The same surface drawn without anything to be made.
            bare.add(fromKey(user, window, sheetPixels, [&] { user.press(key::escape); }));
        }
        user.closeMainWindow(window);
    }
    const QString closing = QStringLiteral("closing it, which draws what it hid");
    return {{QStringLiteral("settings to their first frame"), QStringLiteral("ms"), sheet, closing, bare,
             target::P95AtMost{100}},
            {QStringLiteral("their tab \"Запись\" to its first frame"),
             QStringLiteral("ms"),
             recordingTab,
             closing,
             bare,
             {}}};
}

// Ten steps a second; each is stored once it is drawn.
std::vector<Result> measureSlider(DictationRuns&) {
    const Samples bare = bareKeys(sliderRounds * sliderSteps);
    const RunningProgram program(historyItems);
    WindowUser user;
    const WindowUser::Opened window = user.openHistory();
    openSettings(user);
    pass(1s);
    nextTab(user);
    pass(1s);
    for (int tab = 0; tab < tabsToTheSlider; ++tab)
        user.press(key::tab);
    pass(300ms);
    Samples times;
    for (int round = 0; round < sliderRounds; ++round) {
        for (int step = 0; step < sliderSteps; ++step) {
            const auto next = Clock::now() + 100ms;
            user.watch().forget();
            const auto pressed = Clock::now();
            user.press(round % 2 == 0 ? key::right : key::left);
            times.add(milliseconds(pressed, user.watch().waitForDrawing(window.window, sliderPixels)));
            pass(std::chrono::ceil<std::chrono::milliseconds>(next - Clock::now()));
        }
    }
    const UserDefaults stored(program.defaultsPath());
    constexpr double afterAllSteps = 1.4; // from 0.4: ten up, ten down, ten up
    if (std::abs(stored.real(QStringLiteral("minDuration")).value_or(0) - afterAllSteps) > 0.01)
        throw NotMeasured(QStringLiteral("the steps did not go to the slider"));
    return {{QStringLiteral("step of a slider to its drawing, 10 a second"), QStringLiteral("ms"), times,
             bareKeysName, bare, target::P95AtMost{16.7}}};
}

} // namespace velmora::bench
