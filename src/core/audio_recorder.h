#pragma once

#include "foundation/main_loop.h"
#include "foundation/user_defaults.h"
#include "platform/audio_engine.h"
#include "platform/audio_file.h"

#include <QObject>

namespace velmora {

/// Takes the microphone for dictation: converts what comes in to 16 kHz mono, writes it to a temporary AAC
/// file as it goes, and keeps a level meter. Main thread, but for `onPcmChunk`.
class AudioRecorder : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY isRecordingChanged)
    Q_PROPERTY(float level READ level NOTIFY levelsChanged)

public:
    using PcmChunk = std::function<void(const QByteArray&)>;

    static constexpr AudioFormat targetFormat{16000, 1};
    static constexpr std::size_t levelCount = 32;

    /// Recordings go into `temporaryFolder`, which must exist.
    AudioRecorder(MainLoop& loop, const UserDefaults& defaults, AudioEngine& engine, AudioCodec& codec,
                  QString temporaryFolder, QObject* parent = nullptr);
    ~AudioRecorder() override;

    /// 16-bit PCM of what is recorded, called on the audio thread with each buffer. Set it before start().
    PcmChunk onPcmChunk;

    [[nodiscard]] bool isRecording() const { return m_isRecording; }
    /// The last level, 0.0 to 1.0.
    [[nodiscard]] float level() const { return m_level; }
    /// The last 32 levels, oldest first.
    [[nodiscard]] const std::vector<float>& levels() const { return m_levels; }
    /// The path of the current or last recording; deleting it is the caller's business.
    [[nodiscard]] const std::optional<QString>& lastFileURL() const { return m_lastFileURL; }
    /// Time between start and stop of the last recording, seconds.
    [[nodiscard]] double lastDuration() const { return m_lastDuration; }

    [[nodiscard]] MicrophoneAuthorization authorization() const { return m_engine.authorization(); }
    Task<bool> requestAccess() { return m_engine.requestAccess(); }
    [[nodiscard]] std::vector<AudioInput> availableInputs() const { return m_engine.availableInputs(); }

    /// Begins a recording and gives the path of its file; while one is running, gives that one's. Throws
    /// Error.
    QString start();
    void stop();
    /// Deletes recordings that a killed process has left.
    void removeLeftovers() const;
    /// Makes the next start quick; records nothing and never fails.
    void prewarm();

Q_SIGNALS:
    void isRecordingChanged();
    void levelsChanged();

private:
    class Capture;

    void startEngine(const QString& path);
    void discard();
    void chooseInput();
    [[nodiscard]] std::unique_ptr<AudioFile> openFile(const QString& path);
    void publishLevel(float level);

    MainLoop& m_loop;
    const UserDefaults& m_defaults;
    AudioEngine& m_engine;
    AudioCodec& m_codec;
    const QString m_temporaryFolder;
    std::shared_ptr<Capture> m_capture; // shared with the engine's tap
    std::optional<MainLoop::TimePoint> m_startedAt;
    std::optional<QString> m_lastFileURL;
    double m_lastDuration = 0;
    bool m_isRecording = false;
    float m_level = 0;
    std::vector<float> m_levels = std::vector<float>(levelCount, 0.0F);
};

} // namespace velmora
