#pragma once

#include "speech/audio_error.h"
#include "speech/decoder_process.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <stop_token>
#include <vector>

namespace velmora::server {

/// The sound of an uploaded file as 16 kHz mono. It is decoded in a process of its own, where a file can do
/// no harm, and no further ahead than a pipe holds.
class AudioDecoder {
public:
    /// Starts reading a seekable descriptor from its beginning; nobody else may read from it. Fails with
    /// std::system_error.
    explicit AudioDecoder(int descriptor);

    /// True once the first sound is there, which is waited for that long. Fails with AudioError if there is
    /// none.
    [[nodiscard]] bool ready(std::chrono::milliseconds time);

    /// What the container says about its length, if it does; known when it is ready.
    [[nodiscard]] std::optional<std::chrono::milliseconds> announcedDuration() const { return m_duration; }

    /// The next samples, half a second at most; empty at the end, and when a stop is requested. Fails with
    /// AudioError.
    [[nodiscard]] std::vector<std::int16_t> read(const std::stop_token& stop = {});

private:
    bool readLength();
    bool readSlice(std::vector<std::int16_t>& slice);
    [[noreturn]] void fail();

    DecoderProcess m_process;
    std::optional<std::chrono::milliseconds> m_duration;
    std::size_t m_samples = 0;
    bool m_begun = false;
    bool m_ended = false;
};

} // namespace velmora::server
