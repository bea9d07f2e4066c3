#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace velmora::server {

/// What goes through the pipe from the process that decodes: half a second of sound at most.
struct SoundSlice {
    /// What the container says about the length of the whole, if it does.
    std::optional<std::chrono::milliseconds> announced;
    /// None at the end of the sound.
    std::vector<std::int16_t> samples;
    bool operator==(const SoundSlice&) const = default;
};

/// Fails with std::system_error.
void writeSlice(int descriptor, const SoundSlice& slice);

/// Empty if there is no whole slice, or it is larger than slices are: the process at the other end may be in
/// the hands of the file it reads.
[[nodiscard]] std::optional<SoundSlice> readSlice(int descriptor);

} // namespace velmora::server
