#include "bare_window.h"
#include "figures.h"
#include "pass.h"
#include "process_figures.h"
#include "running_program.h"
#include "support/desktop/physical_keyboard.h"
#include "window_watch.h"

using namespace std::chrono_literals;

namespace velmora::bench {
namespace {

constexpr int runs = 20;
constexpr auto recorded = 600ms; // more than a tap, and longer than the shortest recording that counts
constexpr auto between = 300ms;
constexpr QSize capsule(200, 60); // of its panel, at the least
constexpr auto watched = 10s;

std::vector<ScriptedServer::Step> oneWord() {
    return {{0ms, "event: done\ndata: {\"text\":\"a\",\"wordCount\":1}\n\n"}};
}

/// The share of a core that the program uses while the microphone is open, in per cent.
double costOfRecording(RunningProgram& program, test::PhysicalKeyboard& keyboard) {
    keyboard.press(test::key::rightControl);
    pass(1s);
    const ProcessFigures begin = ProcessFigures::of(program.pid());
    const auto start = Clock::now();
    pass(watched);
    const double time = milliseconds(start, Clock::now());
    const ProcessFigures end = ProcessFigures::of(program.pid());
    keyboard.release(test::key::rightControl);
    pass(1s);
    return 100 * (end.cpuMilliseconds - begin.cpuMilliseconds) / time;
}

} // namespace

std::vector<Result> measurePressToCapsule(DictationRuns&) {
    RunningProgram program;
    program.server().setScript(oneWord());
    test::PhysicalKeyboard keyboard;
    Samples shown;
    Samples bare;
    for (int run = 0; run < runs; ++run) {
        WindowWatch watch;
        const auto pressed = Clock::now();
        keyboard.press(test::key::rightControl);
        const WindowWatch::Drawn panel = watch.waitForNew(capsule);
        shown.add(milliseconds(pressed, panel.at));
        pass(recorded);
        keyboard.release(test::key::rightControl);
        watch.waitForGone(panel.window);
        pass(between);

        const auto started = Clock::now();
        const BareWindow window(QRect(400, 700, 480, 66), false);
        bare.add(milliseconds(started, watch.waitForNew(capsule).at));
    }
    return {{QStringLiteral("press to capsule drawn"), QStringLiteral("ms"), shown,
             QStringLiteral("bare window, made and mapped"), bare, target::P95AtMost{50}}};
}

std::vector<Result> measureRecordingCost(DictationRuns&) {
    test::PhysicalKeyboard keyboard;
    QProcess voice; // levels that move
    voice.start(
        QStringLiteral("sh"),
        {QStringLiteral("-c"), QStringLiteral("head -c 20000000 /dev/urandom | pacat --playback --raw "
                                              "--device=virtual_mic_feed --volume=20000")});
    Samples with;
    Samples without;
    {
        RunningProgram program(0, R"({"hudMinimal": false, "hudSize": "large"})");
        program.server().setScript(oneWord());
        with.add(costOfRecording(program, keyboard));
    }
    {
        RunningProgram program(0, R"({"showHUD": false})");
        program.server().setScript(oneWord());
        without.add(costOfRecording(program, keyboard));
    }
    voice.kill();
    voice.waitForFinished();
    return {{QStringLiteral("recording, the large capsule shown"), QStringLiteral("% core"), with,
             QStringLiteral("the same with no capsule"), without, target::MedianAtMost{15}}};
}

} // namespace velmora::bench
