#include "figures.h"
#include "pass.h"
#include "process_figures.h"
#include "running_program.h"
#include "window_user.h"

using namespace std::chrono_literals;

namespace velmora::bench {
namespace {

constexpr auto settling = 3s; // what has been done leaves something to be done
constexpr auto watched = 60s;
constexpr int historyItems = 200;
constexpr int rounds = 20;
constexpr double residentAtMost = 110;
constexpr double growthAtMost = 10;

const QString bareProgram = QStringLiteral("bare Qt program");

/// What a program used up while nothing was asked of it.
class Idling {
public:
    Idling(qint64 pid)
        : m_pid(pid) {}

    void begin() { m_begin = ProcessFigures::of(m_pid); }
    void end() { m_end = ProcessFigures::of(m_pid); }

    /// Per cent of one core.
    [[nodiscard]] Samples cpu() const {
        const double time = m_end.cpuMilliseconds - m_begin.cpuMilliseconds;
        return Samples({100 * time / std::chrono::duration<double, std::milli>(watched).count()});
    }
    [[nodiscard]] Samples wakeups() const {
        return Samples(
            {double(m_end.wakeupsSince(m_begin)) / std::chrono::duration<double>(watched).count()});
    }
    [[nodiscard]] Samples resident() const { return Samples({m_end.residentMegabytes}); }
    [[nodiscard]] Samples proportional() const { return Samples({m_end.proportionalMegabytes}); }

private:
    qint64 m_pid;
    ProcessFigures m_begin;
    ProcessFigures m_end;
};

/// Lets both the program and a bare one idle.
std::vector<Result> watchIdling(const QString& name, qint64 pid) {
    const test::Program bareQt(QStringLiteral(BARE_QT_PROGRAM), QStringList());
    Idling velmora(pid);
    Idling bare(bareQt.pid());
    pass(settling);
    velmora.begin();
    bare.begin();
    pass(watched);
    velmora.end();
    bare.end();
    const auto result = [&](const char* what, const char* unit, Samples (Idling::*figure)() const,
                            Target target) {
        return Result{name + QLatin1String(what), QLatin1String(unit), (velmora.*figure)(), bareProgram,
                      (bare.*figure)(),           std::move(target)};
    };
    return {result(" for 60 s, processor", "% core", &Idling::cpu, target::MedianAtMost{0.1}),
            result(" for 60 s, wakeups", "1/s", &Idling::wakeups, {}),
            result(", resident memory", "MB", &Idling::resident, target::MedianAtMost{residentAtMost}),
            result(", without what others share", "MB", &Idling::proportional, {})};
}

} // namespace

std::vector<Result> measureIdle(DictationRuns&) {
    const RunningProgram program;
    return watchIdling(QStringLiteral("idle"), program.pid());
}

std::vector<Result> measureAfterWindows(DictationRuns&) {
    const RunningProgram program(historyItems);
    Samples first;
    Samples last;
    {
        WindowUser user;
        for (int round = 0; round < rounds; ++round) {
            user.closePopup(user.openPopup());
            user.closeMainWindow(user.openHistory());
            if (round == 0) {
                pass(settling);
                first.add(ProcessFigures::of(program.pid()).residentMegabytes);
            }
        }
        pass(settling);
        last.add(ProcessFigures::of(program.pid()).residentMegabytes - first.median());
    }
    std::vector<Result> results = watchIdling(QStringLiteral("idle after windows"), program.pid());
    results.push_back({QStringLiteral("growth from the 1st to the 20th opening"), QStringLiteral("MB"), last,
                       QStringLiteral("memory after the first"), first, target::MedianAtMost{growthAtMost}});
    return results;
}

} // namespace velmora::bench
