#pragma once

#include "speech/audio_error.h"
#include "speech/decoder_process.h"
#include "speech/sound_slice.h"

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

    /// What the container says about its length, if it does; asked between being ready and the first read.
    [[nodiscard]] std::optional<std::chrono::milliseconds> announcedDuration() const;

    /// The next samples, half a second at most; empty at the end, and when a stop is requested. Fails with
    /// AudioError.
    [[nodiscard]] std::vector<std::int16_t> read(const std::stop_token& stop = {});

private:
    [[noreturn]] void fail();

    DecoderProcess m_process;
    /// Came early, and is read first.
    std::optional<SoundSlice> m_first;
    std::size_t m_samples = 0;
    bool m_ended = false;
};

} // namespace velmora::server
