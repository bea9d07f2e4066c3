#pragma once

#include "core/level_source.h"
#include "foundation/main_loop.h"
#include "foundation/process_folder.h"
#include "foundation/user_defaults.h"
#include "platform/audio_engine.h"
#include "platform/audio_file.h"

namespace velmora {

/// Takes the microphone for dictation: converts what comes in to 16 kHz mono, writes it to a temporary AAC
/// file as it goes, and keeps a level meter. Main thread, but for `onPcmChunk`.
class AudioRecorder : public LevelSource {
    Q_OBJECT
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY isRecordingChanged)

public:
    using PcmChunk = std::function<void(const QByteArray&)>;

    static constexpr AudioFormat targetFormat{16000, 1};

    AudioRecorder(MainLoop& loop, const UserDefaults& defaults, AudioEngine& engine, AudioCodec& codec,
                  ProcessFolder& recordings, QObject* parent = nullptr);
    ~AudioRecorder() override;

    /// 16-bit PCM of what is recorded, called on the audio thread with each buffer. Set it before start().
    PcmChunk onPcmChunk;

    [[nodiscard]] bool isRecording() const { return m_isRecording; }
    /// The path of the current or last recording; deleting it is the caller's business.
    [[nodiscard]] const std::optional<QString>& lastFileURL() const { return m_lastFileURL; }
    /// Time between start and stop of the last recording, seconds.
    [[nodiscard]] double lastDuration() const { return m_lastDuration; }

    /// Why not all of the last recording is in its file, for the user. When nothing of it could be kept,
    /// there is no file.
    [[nodiscard]] const std::optional<QString>& lastLoss() const { return m_lastLoss; }

    [[nodiscard]] MicrophoneAuthorization authorization() const { return m_engine.authorization(); }
    Task<bool> requestAccess() { return m_engine.requestAccess(); }
    [[nodiscard]] std::vector<AudioInput> availableInputs() const { return m_engine.availableInputs(); }

    /// Begins a recording and gives the path of its file; while one is running, gives that one's. Throws
    /// Error.
    QString start();
    void stop();
    /// Deletes recordings that killed processes have left.
    void removeLeftovers() const { m_recordings.removeAbandoned(); }
    /// Makes the next start quick; records nothing and never fails.
    void prewarm();

Q_SIGNALS:
    void isRecordingChanged();

private:
    class Capture;

    void startEngine(const QString& path);
    void discard();
    [[nodiscard]] std::unique_ptr<AudioFile> openFile(const QString& path);

    MainLoop& m_loop;
    const UserDefaults& m_defaults;
    AudioEngine& m_engine;
    AudioCodec& m_codec;
    ProcessFolder& m_recordings;
    std::shared_ptr<Capture> m_capture; // shared with the engine's tap
    std::optional<MainLoop::TimePoint> m_startedAt;
    std::optional<QString> m_lastFileURL;
    double m_lastDuration = 0;
    std::optional<QString> m_lastLoss;
    bool m_isRecording = false;
};

} // namespace velmora
