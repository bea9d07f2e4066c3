#pragma once

#include "platform/audio_engine.h"
#include "platform/linux/pulse_source.h"
#include "platform/linux/pulse_stream.h"
#include "platform/linux/pulse_timer.h"
#include "platform/linux/silence_pace.h"

namespace velmora {

/// One running capture of a source. While the source, or the server, is gone it delivers silence at the pace
/// of real time, and takes up the source again when it is back. To be made, used and destroyed with the
/// connection's lock.
class PulseCapture {
public:
    /// `device` is the source's name, or empty to record whatever source is the default; `source` is what
    /// that is at the moment. `deliver` is called on the sound thread, always in the format of `source`.
    PulseCapture(PulseConnection& connection, PulseSource source, QByteArray device,
                 AudioEngine::Tap deliver);
    PulseCapture(const PulseCapture&) = delete;
    PulseCapture& operator=(const PulseCapture&) = delete;

    /// Waits until the stream is there; the server's error code, 0 when all is well.
    [[nodiscard]] int start();

private:
    void open();
    void close();
    void streamChanged();
    void checkDevice();
    void read();
    void lose();
    void loseIfSuspended();
    void standIn();
    void deliverSilence(std::int64_t frames);

    PulseConnection& m_connection;
    PulseSource m_source;
    QByteArray m_device;
    AudioEngine::Tap m_deliver;

    PulseStream m_stream;
    PulseOperation m_check; // of a device that the server moved the stream to
    bool m_trusted = false; // the stream's device is no monitor
    bool m_started = false;
    int m_error = 0;

    SilencePace m_pace;
    PulseTimer m_standInTimer;
    SilencePace::TimePoint m_lastSample;
    SilencePace::TimePoint m_lastTry;
    std::vector<float> m_silence; // one buffer's worth
};

} // namespace velmora
