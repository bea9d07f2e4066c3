#include "core/audio_recorder.h"

#include "core/chosen_input.h"
#include "core/level_meter.h"
#include "core/pcm16.h"

#include <QFile>
#include <QPointer>

namespace velmora {

// What the audio thread works with. It is taken down on the main thread, after the engine has promised that
// the tap runs no more, so it needs no lock.
class AudioRecorder::Capture {
public:
    Capture(std::unique_ptr<AudioFile> file, std::unique_ptr<AudioConverter> converter, PcmChunk onPcmChunk)
        : m_file(std::move(file))
        , m_converter(std::move(converter))
        , m_onPcmChunk(std::move(onPcmChunk)) {}

    void process(const AudioBuffer& buffer) {
        deliver([&] { return m_converter->convert(buffer); });
    }

    /// Writes what the converter still holds and completes the file. Throws Error when not all of it was
    /// kept.
    void finish() {
        deliver([&] { return m_converter->flush(); });
        m_file->finish();
    }

private:
    // Nobody could act on a failure here: what it concerns is lost and the recording goes on. Of what the
    // disk refuses, the end of the file tells.
    template<typename Convert>
    void deliver(const Convert& convert) {
        std::vector<float> samples;
        if (!succeeds([&] { samples = convert(); }) || samples.empty())
            return;
        succeeds([&] { m_file->write(samples); });
        if (m_onPcmChunk)
            succeeds([&] { m_onPcmChunk(toPcm16(samples)); });
    }

    template<typename Step>
    static bool succeeds(const Step& step) {
        try {
            step();
            return true;
        } catch (...) {
            return false;
        }
    }

    std::unique_ptr<AudioFile> m_file;
    std::unique_ptr<AudioConverter> m_converter;
    PcmChunk m_onPcmChunk;
};

AudioRecorder::AudioRecorder(MainLoop& loop, const UserDefaults& defaults, AudioEngine& engine,
                             AudioCodec& codec, ProcessFolder& recordings, QObject* parent)
    : LevelSource(parent)
    , m_loop(loop)
    , m_defaults(defaults)
    , m_engine(engine)
    , m_codec(codec)
    , m_recordings(recordings) {}

// A recording that nobody stopped is lost, with its file.
AudioRecorder::~AudioRecorder() {
    m_engine.removeTap();
    if (m_isRecording) {
        m_engine.stop();
        discard();
    }
}

QString AudioRecorder::start() {
    if (m_isRecording)
        return m_lastFileURL.value_or(QString());
    const auto seconds = std::chrono::floor<std::chrono::seconds>(m_loop.date()).time_since_epoch().count();
    const QString path = QStringLiteral("%1/velmora-%2.m4a").arg(m_recordings.path()).arg(seconds);
    m_lastFileURL = path;
    startEngine(path);
    return path;
}

void AudioRecorder::startEngine(const QString& path) {
    if (m_engine.authorization() != MicrophoneAuthorization::Authorized)
        throw AudioDeviceError(AudioDeviceError::MicNotAuthorized{});
    useChosenInput(m_engine, m_defaults);
    const AudioFormat inputFormat = m_engine.inputFormat();
    if (inputFormat.sampleRate <= 0)
        throw AudioDeviceError(AudioDeviceError::EngineUnavailable{});
    std::unique_ptr<AudioConverter> converter =
        m_codec.makeMonoConverter(inputFormat, targetFormat.sampleRate);
    m_capture = std::make_shared<Capture>(openFile(path), std::move(converter), onPcmChunk);
    m_engine.installTap([this, capture = m_capture](const AudioBuffer& buffer) {
        m_loop.post([self = QPointer(this), level = levelOf(buffer)] {
            if (self && self->m_isRecording)
                self->publishLevel(level);
        });
        capture->process(buffer);
    });
    try {
        m_engine.start();
    } catch (const Error&) {
        m_engine.removeTap();
        discard();
        throw;
    }
    m_startedAt = m_loop.now();
    m_isRecording = true;
    Q_EMIT isRecordingChanged();
}

void AudioRecorder::discard() {
    m_capture.reset();
    QFile::remove(*m_lastFileURL);
}

std::unique_ptr<AudioFile> AudioRecorder::openFile(const QString& path) {
    for (const int bitRate : {64000, 48000, 32000}) {
        try {
            return m_codec.openForWriting(path, {targetFormat, bitRate, std::nullopt});
        } catch (const Error&) {
        }
    }
    constexpr int highQuality = 96;
    return m_codec.openForWriting(path, {targetFormat, std::nullopt, highQuality});
}

void AudioRecorder::stop() {
    if (!m_isRecording)
        return;
    m_engine.removeTap();
    m_engine.stop();
    m_lastDuration = m_startedAt ? std::chrono::duration<double>(m_loop.now() - *m_startedAt).count() : 0;
    try {
        m_capture->finish();
        m_lastLoss.reset();
    } catch (const Error& error) {
        m_lastLoss = error.localizedDescription();
    }
    m_capture.reset();
    m_isRecording = false;
    Q_EMIT isRecordingChanged();
    clearLevels();
}

void AudioRecorder::prewarm() {
    if (m_isRecording || m_engine.authorization() != MicrophoneAuthorization::Authorized)
        return;
    useChosenInput(m_engine, m_defaults);
    (void)m_engine.inputFormat();
    m_engine.prepare();
}

} // namespace velmora
