#include "core/audio_recorder.h"
#include "figures.h"
#include "foundation/qt_main_loop.h"
#include "platform/linux/ffmpeg_audio_codec.h"
#include "process_figures.h"
#include "support/fake_audio.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <random>

namespace velmora::bench {
namespace {

constexpr int runs = 20;
constexpr int minutes = 10;
constexpr int buffersPerSecond = 50;
constexpr AudioFormat format{48'000, 1};
constexpr std::size_t bufferSize = 48'000 / buffersPerSecond;

std::vector<std::vector<float>> makeSecondOfNoise() {
    std::mt19937 random(1); // NOLINT: the same noise every time
    std::uniform_real_distribution<float> amplitude(-0.5F, 0.5F);
    std::vector<std::vector<float>> buffers(buffersPerSecond, std::vector<float>(bufferSize));
    for (std::vector<float>& buffer : buffers)
        std::ranges::generate(buffer, [&] { return amplitude(random); });
    return buffers;
}

/// The growth that a fresh process reports of its recording.
double recordInFreshProcess() {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--record")});
    if (!process.waitForFinished(120'000) || process.exitCode() != 0)
        throw NotMeasured(QStringLiteral("the recording process failed"));
    return process.readAllStandardOutput().toDouble();
}

} // namespace

// Prints by how much the resident memory exceeded at its peak what it was before the recording.
int recordTenMinutes() {
    const QTemporaryDir folder;
    QtMainLoop loop;
    const UserDefaults defaults(folder.filePath(QStringLiteral("defaults.json")));
    test::FakeAudioEngine engine;
    engine.format = format;
    FfmpegAudioCodec codec;
    ProcessFolder recordings(folder.path(), QStringLiteral("recordings"));
    AudioRecorder recorder(loop, defaults, engine, codec, recordings);
    const std::vector<std::vector<float>> noise = makeSecondOfNoise();

    // The encoder of the first recording stays loaded; that isn't what a long recording costs.
    recorder.start();
    for (const std::vector<float>& buffer : noise)
        engine.speak(buffer);
    recorder.stop();

    const double before = ownResidentMegabytes();
    double peak = before;
    const QString path = recorder.start();
    for (int second = 0; second < minutes * 60; ++second) {
        for (const std::vector<float>& buffer : noise)
            engine.speak(buffer);
        QCoreApplication::processEvents(); // the levels
        peak = std::max(peak, ownResidentMegabytes());
    }
    recorder.stop();
    peak = std::max(peak, ownResidentMegabytes());
    std::printf("%f\n", peak - before);
    constexpr qint64 leastBytesPerSecond = 2000;
    return QFileInfo(path).size() > leastBytesPerSecond * minutes * 60 ? EXIT_SUCCESS : EXIT_FAILURE;
}

std::vector<Result> measureRecordingMemory(DictationRuns&) {
    Samples growth;
    for (int run = 0; run < runs; ++run)
        growth.add(recordInFreshProcess());
    const double audio = minutes * 60 * format.sampleRate * sizeof(float) / 1e6;
    return {{QStringLiteral("memory of 10 minutes recorded"), QStringLiteral("MB"), growth,
             QStringLiteral("the samples themselves"), Samples({audio}), target::MedianAtMost{5}}};
}

} // namespace velmora::bench
