#pragma once

#include "platform/audio_engine.h"

#include <mutex>

namespace velmora::test {

/// Keeps what an engine's tap was given.
class TapRecording {
public:
    /// To be installed; the recording must outlive it.
    [[nodiscard]] AudioEngine::Tap tap();

    /// False when there is less after twenty seconds.
    [[nodiscard]] bool waitForSeconds(double seconds) const;
    [[nodiscard]] double seconds() const;
    /// Of the last buffer.
    [[nodiscard]] AudioFormat format() const;
    /// Everything so far, interleaved.
    [[nodiscard]] std::vector<float> samples() const;
    /// What came last, interleaved.
    [[nodiscard]] std::vector<float> last(double seconds) const;
    void clear();

private:
    mutable std::mutex m_mutex;
    AudioFormat m_format;
    std::vector<float> m_samples;
};

} // namespace velmora::test
