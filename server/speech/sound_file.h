#pragma once

#include "speech/audio_error.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace velmora::server {

/// Reads the sound of a file in whatever container and codec it came, as 16 kHz mono. Channels are averaged.
/// Belongs into a process of its own: a file can make the libraries under it take any time and memory. All
/// failures that the file is to blame for are AudioError.
class SoundFile {
public:
    /// Reads from a seekable descriptor, which must stay open.
    explicit SoundFile(int descriptor);
    ~SoundFile();
    SoundFile(const SoundFile&) = delete;
    SoundFile& operator=(const SoundFile&) = delete;

    /// What the container says about its length, if it does.
    [[nodiscard]] std::optional<std::chrono::milliseconds> announcedDuration() const;

    /// The next half second, less at the end, and nothing behind it.
    [[nodiscard]] std::vector<std::int16_t> read();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace velmora::server
