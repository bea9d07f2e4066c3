#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

namespace velmora::server {

/// A file that holds no audio that can be read.
class AudioError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads the sound of an uploaded file, in whatever container and codec it came, as 16 kHz mono. Channels are
/// averaged. All failures are AudioError.
class AudioDecoder {
public:
    /// Reads from a seekable descriptor, which must stay open.
    explicit AudioDecoder(int descriptor);
    ~AudioDecoder();
    AudioDecoder(const AudioDecoder&) = delete;
    AudioDecoder& operator=(const AudioDecoder&) = delete;

    /// What the container says about its length, if it does.
    [[nodiscard]] std::optional<std::chrono::milliseconds> announcedDuration() const;

    /// The next samples, some tenths of a second at most; empty at the end.
    [[nodiscard]] std::vector<std::int16_t> read();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace velmora::server
