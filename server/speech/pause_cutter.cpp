#include "speech/pause_cutter.h"

#include "speech/sample_rate.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace velmora::server {

namespace {

constexpr std::chrono::milliseconds frameTime{20};
constexpr std::size_t frameSize = samplesIn(frameTime);

/// Speech is this much above the noise. The noise starts low, so that a room's hum counts as speech for the
/// first seconds rather than speech as hum; it falls at once and rises slowly.
constexpr float speechAboveNoise = 3;
constexpr float initialNoise = 20;
constexpr float lowestNoise = 10;
constexpr float noiseRise = 1.01F;

/// Silence that stays around speech, for its soft beginnings and ends.
constexpr std::size_t paddingFrames = 15;
/// Less speech than this is a click.
constexpr std::ptrdiff_t fewestSpeechFrames = 3;
/// Where a piece that is too long may be cut: its last third.
constexpr std::size_t searchShare = 3;
/// The width of the place that is quietest.
constexpr std::size_t quietFrames = 5;

std::size_t framesIn(std::chrono::milliseconds time) {
    return static_cast<std::size_t>(time / frameTime);
}

float levelOf(std::span<const std::int16_t> frame) {
    const auto sum = std::accumulate(frame.begin(), frame.end(), 0.0, [](double total, std::int16_t sample) {
        return total + sample * sample;
    });
    return static_cast<float>(std::sqrt(sum / static_cast<double>(frame.size())));
}

} // namespace

PauseCutter::PauseCutter(PieceLimits limits)
    : m_limits(limits)
    , m_noise(initialNoise) {}

void PauseCutter::push(std::span<const std::int16_t> samples, const std::stop_token& stop) {
    // Frame by frame, so that a cut moves no more than its piece however much comes at once.
    while (!samples.empty() && !stop.stop_requested()) {
        const auto missing = (m_levels.size() + 1) * frameSize - m_samples.size();
        const auto part = samples.first(std::min(missing, samples.size()));
        m_samples.insert(m_samples.end(), part.begin(), part.end());
        samples = samples.subspan(part.size());
        if (part.size() == missing) {
            takeFrame();
        }
    }
}

void PauseCutter::takeFrame() {
    const auto level = levelOf({m_samples.data() + m_levels.size() * frameSize, frameSize});
    m_noise = std::max(lowestNoise, std::min(level, m_noise * noiseRise));
    m_levels.push_back(level);
    m_speech.push_back(level > m_noise * speechAboveNoise);
    m_silent = m_speech.back() ? 0 : m_silent + 1;

    const auto frames = m_levels.size();
    if (m_silent == frames) {
        if (frames > paddingFrames) {
            cutAt(0, frames - paddingFrames);
        }
    } else if (m_silent >= framesIn(m_limits.pause) && frames - m_silent >= framesIn(m_limits.shortest)) {
        const auto padding = std::min(m_silent, paddingFrames);
        cutAt(frames - m_silent + padding, frames - padding);
    } else if (frames >= framesIn(m_limits.longest)) {
        const auto place = quietestFrame();
        cutAt(place, place);
    }
}

std::size_t PauseCutter::quietestFrame() const {
    const auto first = m_levels.size() - m_levels.size() / searchShare;
    auto best = m_levels.size();
    auto lowest = std::numeric_limits<float>::max();
    for (auto begin = first; begin + quietFrames <= m_levels.size(); ++begin) {
        const auto from = m_levels.begin() + static_cast<std::ptrdiff_t>(begin);
        const auto level = std::accumulate(from, from + quietFrames, 0.0F);
        if (level < lowest) {
            lowest = level;
            best = begin + quietFrames / 2;
        }
    }
    return best;
}

void PauseCutter::cutAt(std::size_t frames, std::size_t frameToContinueFrom) {
    const auto end = static_cast<std::ptrdiff_t>(frames);
    if (std::count(m_speech.begin(), m_speech.begin() + end, true) >= fewestSpeechFrames) {
        m_finished.emplace_back(m_samples.begin(),
                                m_samples.begin() + end * static_cast<std::ptrdiff_t>(frameSize));
    }
    const auto rest = static_cast<std::ptrdiff_t>(frameToContinueFrom);
    m_samples.erase(m_samples.begin(), m_samples.begin() + rest * static_cast<std::ptrdiff_t>(frameSize));
    m_levels.erase(m_levels.begin(), m_levels.begin() + rest);
    m_speech.erase(m_speech.begin(), m_speech.begin() + rest);
    m_silent = std::min(m_silent, m_speech.size());
}

void PauseCutter::finish() {
    cutAt(m_levels.size(), m_levels.size());
    m_samples.clear();
}

std::optional<PauseCutter::Piece> PauseCutter::next() {
    if (m_finished.empty()) {
        return std::nullopt;
    }
    auto piece = std::move(m_finished.front());
    m_finished.pop_front();
    return piece;
}

} // namespace velmora::server
