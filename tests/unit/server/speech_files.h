#pragma once

#include <filesystem>
#include <string>

namespace velmora::server {

/// A WAV file of the voice kal16 saying the text: 16 kHz mono.
void speakToWav(const std::string& text, const std::filesystem::path& file);

/// The same sound as two-channel AAC in a fragmented MP4 file, as a recorder writes that wants to lose
/// nothing.
void speakToM4a(const std::string& text, const std::filesystem::path& file);

[[nodiscard]] std::string readFile(const std::filesystem::path& file);

} // namespace velmora::server
