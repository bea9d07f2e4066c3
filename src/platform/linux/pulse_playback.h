#pragma once

#include "platform/linux/pulse_stream.h"
#include "platform/linux/wav_sound.h"

namespace velmora {

class PulseConnection;

/// One sound on its way to the speakers; destruction cuts it off. To be made and destroyed with the
/// connection's lock, while the connection is ready.
class PulsePlayback {
public:
    /// `volume` goes from 0.0 to 1.0.
    PulsePlayback(PulseConnection& connection, const WavSound& sound, float volume);
    PulsePlayback(const PulsePlayback&) = delete;
    PulsePlayback& operator=(const PulsePlayback&) = delete;

private:
    void streamChanged();
    void close();

    std::vector<float> m_samples;
    PulseStream m_stream;   // none when it has ended
    PulseOperation m_drain; // ends when all was heard
};

} // namespace velmora
