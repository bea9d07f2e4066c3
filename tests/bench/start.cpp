#include "figures.h"

#include <QProcess>

namespace velmora::bench {
namespace {

constexpr int runs = 20;
const QString program = QStringLiteral(VELMORA_PROGRAM);

/// From the start of the process to the moment in which the hotkey works, in milliseconds.
double startToHotkey() {
    QProcess process;
    process.setReadChannel(QProcess::StandardError);
    const auto start = Clock::now();
    process.start(program, QStringList());
    QByteArray log;
    while (!log.contains("HotkeyMonitor.start: tap active")) {
        if (!process.waitForReadyRead(10'000))
            throw NotMeasured(QStringLiteral("the hotkey did not become active: ") +
                              QString::fromUtf8(log + process.readAll()));
        log += process.readAll();
    }
    const auto active = Clock::now();
    process.terminate();
    if (!process.waitForFinished(10'000))
        throw NotMeasured(QStringLiteral("the program did not end"));
    return milliseconds(start, active);
}

double printVersion() {
    QProcess process;
    const auto start = Clock::now();
    process.start(program, {QStringLiteral("--version")});
    if (!process.waitForFinished(10'000) || process.exitCode() != 0)
        throw NotMeasured(QStringLiteral("the program does not tell its version"));
    return milliseconds(start, Clock::now());
}

} // namespace

std::vector<Result> measureStart(DictationRuns&) {
    Samples hotkey, version;
    for (int run = -1; run < runs; ++run) { // the first one warms up
        const double hotkeyTime = startToHotkey();
        const double versionTime = printVersion();
        if (run < 0)
            continue;
        hotkey.add(hotkeyTime);
        version.add(versionTime);
    }
    return {{QStringLiteral("start to hotkey"), QStringLiteral("ms"), hotkey,
             QStringLiteral("velmora --version"), version, target::MedianAtMost{150}}};
}

} // namespace velmora::bench
