#include "figures.h"
#include "pass.h"
#include "process_figures.h"

#include <QProcess>

using namespace std::chrono_literals;

namespace velmora::bench {
namespace {

constexpr auto settling = 3s; // what the start leaves to be done
constexpr auto watched = 60s;

/// A program that has nothing to do, with what it used up meanwhile.
class Idler {
public:
    explicit Idler(const QString& program) {
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(program, QStringList());
        if (!m_process.waitForStarted())
            throw NotMeasured(program + QStringLiteral(" did not start"));
    }
    ~Idler() {
        m_process.terminate();
        m_process.waitForFinished();
    }
    Idler(const Idler&) = delete;
    Idler& operator=(const Idler&) = delete;

    void begin() { m_begin = ProcessFigures::of(m_process.processId()); }
    void end() { m_end = ProcessFigures::of(m_process.processId()); }

    /// Per cent of one core.
    [[nodiscard]] Samples cpu() const {
        const double time = m_end.cpuMilliseconds - m_begin.cpuMilliseconds;
        return Samples({100 * time / std::chrono::duration<double, std::milli>(watched).count()});
    }
    [[nodiscard]] Samples wakeups() const {
        return Samples(
            {double(m_end.wakeups - m_begin.wakeups) / std::chrono::duration<double>(watched).count()});
    }
    [[nodiscard]] Samples resident() const { return Samples({m_end.residentMegabytes}); }
    [[nodiscard]] Samples proportional() const { return Samples({m_end.proportionalMegabytes}); }

private:
    QProcess m_process;
    ProcessFigures m_begin;
    ProcessFigures m_end;
};

} // namespace

std::vector<Result> measureIdle(DictationRuns&) {
    Idler velmora(QStringLiteral(VELMORA_PROGRAM));
    Idler bare(QStringLiteral(BARE_QT_PROGRAM));
    pass(settling);
    velmora.begin();
    bare.begin();
    pass(watched);
    velmora.end();
    bare.end();
    const QString baseline = QStringLiteral("bare Qt program");
    const auto result = [&](const char* what, const char* unit, Samples (Idler::*figure)() const,
                            Target target) {
        return Result{QLatin1String(what), QLatin1String(unit), (velmora.*figure)(), baseline,
                      (bare.*figure)(),    std::move(target)};
    };
    return {result("idle for 60 s, processor", "% core", &Idler::cpu, target::MedianAtMost{0.1}),
            result("idle for 60 s, wakeups", "1/s", &Idler::wakeups, {}),
            result("idle, resident memory", "MB", &Idler::resident, target::MedianAtMost{60}),
            result("idle, without what others share", "MB", &Idler::proportional, {})};
}

} // namespace velmora::bench
