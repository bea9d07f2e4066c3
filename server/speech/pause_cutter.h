#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

namespace velmora::server {

/// How long pieces may be, and what counts as a pause.
struct PieceLimits {
    /// A pause ends a piece only when the piece has this length.
    std::chrono::milliseconds shortest{1500};
    /// Longer speech without a pause is cut at its quietest place.
    std::chrono::milliseconds longest{30'000};
    std::chrono::milliseconds pause{500};
};

/// Cuts 16 kHz mono sound at pauses into pieces for a recogniser, and drops the silence between them.
class PauseCutter {
public:
    using Piece = std::vector<std::int16_t>;

    explicit PauseCutter(PieceLimits limits);

    /// Leaves off when a stop is requested.
    void push(std::span<const std::int16_t> samples, const std::stop_token& stop = {});

    /// Nothing more comes: what is left becomes the last piece.
    void finish();

    /// The next finished piece, if there is one.
    [[nodiscard]] std::optional<Piece> next();

private:
    void takeFrame();
    void cutAt(std::size_t frames, std::size_t frameToContinueFrom);
    [[nodiscard]] std::size_t quietestFrame() const;

    PieceLimits m_limits;
    std::deque<Piece> m_finished;
    /// Whole frames that belong to the current piece, then what does not fill a frame yet; never more than
    /// the longest piece.
    Piece m_samples;
    /// Level of each frame in m_samples, as root mean square.
    std::vector<float> m_levels;
    std::vector<bool> m_speech;
    /// Frames of the current piece behind its last speech.
    std::size_t m_silent = 0;
    float m_noise;
};

} // namespace velmora::server
