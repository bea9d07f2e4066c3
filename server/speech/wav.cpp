#include "speech/wav.h"

#include "speech/sample_rate.h"

#include <Poco/BinaryWriter.h>

#include <sstream>

namespace velmora::server {

std::string wavFile(std::span<const std::int16_t> samples) {
    constexpr std::uint32_t headerSize = 36;
    constexpr std::uint16_t sampleSize = sizeof(std::int16_t);
    const auto dataSize = static_cast<std::uint32_t>(samples.size_bytes());
    std::ostringstream file;
    Poco::BinaryWriter writer(file, Poco::BinaryWriter::LITTLE_ENDIAN_BYTE_ORDER);
    writer.writeRaw("RIFF");
    writer << headerSize + dataSize;
    writer.writeRaw("WAVEfmt ");
    writer << std::uint32_t{16} << std::uint16_t{1} << std::uint16_t{1};
    writer << std::uint32_t{sampleRate} << std::uint32_t{sampleRate * sampleSize};
    writer << sampleSize << std::uint16_t{8 * sampleSize};
    writer.writeRaw("data");
    writer << dataSize;
    for (const auto sample : samples) {
        writer << sample;
    }
    writer.flush();
    return file.str();
}

} // namespace velmora::server
