// Computes the sounds of a dictation: make_sounds FOLDER writes Tink.wav and Pop.wav.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <numbers>
#include <string>
#include <vector>

namespace {

constexpr int sampleRate = 48'000;
constexpr double peak = 0.5; // -6 dB below full scale
constexpr double tau = 2 * std::numbers::pi;

using Samples = std::vector<double>;

Samples silence(double seconds) {
    return Samples(static_cast<std::size_t>(seconds * sampleRate));
}

/// A half cosine from 0 to 1 over the first `length` seconds, 1 after them.
double rise(double time, double length) {
    return time >= length ? 1.0 : 0.5 - 0.5 * std::cos(std::numbers::pi * time / length);
}

/// Brings both ends to zero without a click, and the loudest sample to the common peak.
void finish(Samples& samples, double attack, double release) {
    const double length = static_cast<double>(samples.size() - 1) / sampleRate;
    double loudest = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double time = static_cast<double>(i) / sampleRate;
        samples[i] *= rise(time, attack) * rise(length - time, release);
        loudest = std::max(loudest, std::abs(samples[i]));
    }
    for (double& sample : samples)
        sample *= peak / loudest;
}

/// A small glass touched with a spoon: the partials of a struck bar, the higher ones gone sooner.
Samples tink() {
    struct Partial {
        double frequency, amplitude, decay; // Hz, relative, seconds to 1/e
    };
    constexpr Partial partials[] = {
        {1'760.0, 0.35, 0.034}, {2'640.0, 1.00, 0.030},  {4'715.0, 0.42, 0.016},
        {7'276.0, 0.20, 0.008}, {10'420.0, 0.08, 0.004},
    };
    Samples samples = silence(0.120);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double time = static_cast<double>(i) / sampleRate;
        for (const Partial& partial : partials)
            samples[i] += partial.amplitude * std::exp(-time / partial.decay) *
                          std::sin(tau * partial.frequency * time);
    }
    finish(samples, 0.0015, 0.030);
    return samples;
}

/// A bubble: its tone climbs as it shrinks, and dies away soon after it opened.
Samples pop() {
    constexpr double lowest = 380.0, climb = 620.0, climbTime = 0.045; // Hz, Hz, seconds
    Samples samples = silence(0.090);
    double phase = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double time = static_cast<double>(i) / sampleRate;
        const double progress = std::min(time / climbTime, 1.0);
        phase += tau * (lowest + climb * progress * progress) / sampleRate;
        samples[i] = std::exp(-time / 0.022) * (std::sin(phase) + 0.12 * std::sin(2 * phase));
    }
    finish(samples, 0.004, 0.030);
    return samples;
}

template<typename T>
void appendLittle(std::string& bytes, T value) {
    for (std::size_t i = 0; i < sizeof(T); ++i)
        bytes += static_cast<char>((static_cast<std::uint64_t>(value) >> (8 * i)) & 0xff);
}

std::string toWav(const Samples& samples) {
    constexpr std::uint16_t bytesPerSample = 2;
    const auto dataSize = static_cast<std::uint32_t>(samples.size() * bytesPerSample);
    std::string bytes = "RIFF";
    appendLittle(bytes, 36 + dataSize);
    bytes += "WAVEfmt ";
    appendLittle(bytes, std::uint32_t{16});
    appendLittle(bytes, std::uint16_t{1}); // PCM
    appendLittle(bytes, std::uint16_t{1}); // channels
    appendLittle(bytes, std::uint32_t{sampleRate});
    appendLittle(bytes, std::uint32_t{sampleRate * bytesPerSample});
    appendLittle(bytes, bytesPerSample);
    appendLittle(bytes, std::uint16_t{8 * bytesPerSample});
    bytes += "data";
    appendLittle(bytes, dataSize);
    for (const double sample : samples)
        appendLittle(bytes,
                     static_cast<std::uint16_t>(static_cast<std::int16_t>(std::lround(sample * 32'767))));
    return bytes;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: make_sounds FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::filesystem::create_directories(folder);
    std::ofstream tinkFile(folder / "Tink.wav", std::ios::binary);
    tinkFile << toWav(tink());
    std::ofstream popFile(folder / "Pop.wav", std::ios::binary);
    popFile << toWav(pop());
    return tinkFile.flush() && popFile.flush() ? 0 : 1;
}
