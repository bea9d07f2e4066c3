#pragma once

#include "platform/audio_engine.h"
#include "platform/linux/pulse_source.h"

namespace velmora {

class PulseCapture;
class PulseConnection;
class PulseDevices;

/// Microphones of the sound server; an input's ID is its source's name. The tap runs on the connection's
/// sound thread, under its lock.
class PulseAudioEngine final : public AudioEngine {
public:
    /// What `devices` know already is not asked for again, so that a start costs the main thread one
    /// question.
    explicit PulseAudioEngine(PulseConnection& connection, PulseDevices* devices = nullptr);
    ~PulseAudioEngine() override;

    /// `Authorized` when there is a microphone to be had, else `Denied`: the desktop has no finer rights.
    [[nodiscard]] MicrophoneAuthorization authorization() override;
    QCoro::Task<bool> requestAccess() override;
    [[nodiscard]] std::vector<AudioInput> availableInputs() override;
    void useDefaultInput() override;
    /// Leaves the default input in use when it throws.
    void setInputDevice(const QString& uniqueID) override;
    [[nodiscard]] AudioFormat inputFormat() override;
    void prepare() override;
    void installTap(Tap tap) override;
    void removeTap() override;
    void start() override;
    void stop() override;

private:
    [[nodiscard]] std::optional<PulseSource> findInput();

    PulseConnection& m_connection;
    PulseDevices* m_devices;
    QByteArray m_device;                // empty for the default
    std::optional<PulseSource> m_input; // found for the start that is to come
    Tap m_tap;
    std::unique_ptr<PulseCapture> m_capture;
};

} // namespace velmora
