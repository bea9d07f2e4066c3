#include "decoded_file.h"
#include "platform/linux/ffmpeg_audio_codec.h"
#include "platform/linux/pulse_audio_engine.h"
#include "platform/linux/pulse_connection.h"
#include "support/desktop/private_pulse_server.h"
#include "support/desktop/tap_recording.h"
#include "support/desktop/tone.h"

#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace velmora;
using namespace velmora::test;

// The way of a dictation on the server that the desktop names: what is said into the virtual microphone
// stands in the file.
TEST(PulseAudioEngineOnTheDesktop, Start_ToneIntoTheMicrophone_IsInTheFile) {
    QTemporaryDir folder;
    writeWav(folder.filePath(u"tone.wav"_s), makeTone(1000, 0.4, 30, {48'000, 1}), {48'000, 1});
    QProcess speaker;
    speaker.start(u"paplay"_s, {u"--device=virtual_mic_feed"_s, folder.filePath(u"tone.wav"_s)});

    PulseConnection connection;
    PulseAudioEngine engine(connection);
    EXPECT_THAT(engine.availableInputs(),
                testing::Contains(AudioInput{u"virtual_mic"_s, u"Virtual microphone"_s}));
    engine.useDefaultInput();
    const AudioFormat format = engine.inputFormat();
    EXPECT_EQ(format, (AudioFormat{48'000, 1}));

    FfmpegAudioCodec codec;
    const QString path = folder.filePath(u"dictation.m4a"_s);
    auto file = codec.openForWriting(path, {.format = {16'000, 1}, .bitRate = 64'000});
    const auto converter = codec.makeMonoConverter(format, 16'000);
    TapRecording recording;
    const AudioEngine::Tap keep = recording.tap();
    engine.installTap([&](const AudioBuffer& buffer) {
        file->write(converter->convert(buffer));
        keep(buffer);
    });
    engine.start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return peakOf(recording.samples()) > 0.39; }, 20'000));
    const double heardAt = recording.seconds();
    ASSERT_TRUE(recording.waitForSeconds(heardAt + 2));
    engine.removeTap();
    engine.stop();
    file->write(converter->flush());
    file.reset();
    speaker.kill();
    speaker.waitForFinished();

    const DecodedFile decoded = decodeFile(path);
    EXPECT_EQ(decoded.format, (AudioFormat{16'000, 1}));
    EXPECT_NEAR(decoded.seconds(), recording.seconds(), 0.07);
    const auto lastSecond = std::span(decoded.samples).last(17'600).first(16'000);
    EXPECT_NEAR(measureTone(lastSecond, 1000, 16'000), 0.4, 0.01);
}
