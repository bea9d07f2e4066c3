#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace velmora::server {

struct Encoding {
    /// As libav's muxers and encoders are called.
    std::string container;
    std::string codec;
    int rate = 16'000;
    int channels = 1;
};

/// A file of 16 kHz mono sound. MP4 is written in fragments, as a recorder does that wants to lose nothing.
void encode(const std::vector<std::int16_t>& samples, const Encoding& encoding,
            const std::filesystem::path& file);

/// A WAV file of the voice kal16 saying the text: 16 kHz mono.
void speakToWav(const std::string& text, const std::filesystem::path& file);

/// The same sound as two-channel AAC in MP4.
void speakToM4a(const std::string& text, const std::filesystem::path& file);

[[nodiscard]] std::string readFile(const std::filesystem::path& file);

} // namespace velmora::server
