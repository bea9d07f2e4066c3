#include "attack_files.h"

#include "speech/wav.h"

#include <Poco/Checksum.h>
#include <Poco/DeflatingStream.h>

#include <cstring>
#include <initializer_list>
#include <sstream>

namespace velmora::server {

namespace {

/// Big-endian, of so many bytes.
std::string number(std::uint64_t value, std::size_t bytes) {
    std::string text(bytes, '\0');
    for (auto byte = text.rbegin(); byte != text.rend(); ++byte, value >>= 8) {
        *byte = static_cast<char>(value & 0xFF);
    }
    return text;
}

std::uint32_t checksum(const std::string& bytes, int bits, std::uint32_t polynomial) {
    std::uint32_t sum = 0;
    const std::uint32_t top = 1U << (bits - 1);
    for (const char byte : bytes) {
        sum ^= static_cast<std::uint32_t>(static_cast<unsigned char>(byte)) << (bits - 8);
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum & top) != 0 ? sum << 1 ^ polynomial : sum << 1;
        }
        sum &= (top << 1) - 1;
    }
    return sum;
}

std::string join(std::initializer_list<std::string> parts) {
    std::string all;
    for (const auto& part : parts) {
        all += part;
    }
    return all;
}

std::string atom(const std::string& name, std::initializer_list<std::string> parts) {
    const auto content = join(parts);
    return number(8 + content.size(), 4) + name + content;
}

/// A film of one track: `media` is its data, `entry` describes it, `count` samples of `size` bytes each are
/// in the data if it is long enough.
std::string film(const std::string& handler, const std::string& entry, const std::string& media,
                 std::uint32_t count, std::uint32_t size) {
    const auto zeros = [](std::size_t bytes) { return std::string(bytes, '\0'); };
    const auto type = atom("ftyp", {"qt  ", zeros(4), "qt  "});
    const auto table =
        atom("stbl", {atom("stsd", {number(1, 8), entry}),
                      atom("stts", {number(1, 8), number(count, 4), number(1024, 4)}),
                      atom("stsc", {number(1, 8), number(1, 4), number(count, 4), number(1, 4)}),
                      atom("stsz", {zeros(4), number(size, 4), number(count, 4)}),
                      atom("stco", {number(1, 8), number(type.size() + 8, 4)})});
    const auto references = atom("dinf", {atom("dref", {number(1, 8), atom("url ", {number(1, 4)})})});
    const auto track = atom(
        "trak", {atom("tkhd", {number(1, 4), zeros(8), number(1, 4), zeros(4), number(1000, 4), zeros(60)}),
                 atom("mdia", {atom("mdhd", {zeros(12), number(8000, 4), number(1000, 4), zeros(4)}),
                               atom("hdlr", {zeros(4), "mhlr", handler, zeros(13)}),
                               atom("minf", {references, table})})});
    const auto header = atom("mvhd", {zeros(12), number(1000, 4), number(1000, 4), zeros(80)});
    return join({type, atom("mdat", {media}), atom("moov", {header, track})});
}

std::string pngChunk(const std::string& name, const std::string& content) {
    const auto checked = name + content;
    Poco::Checksum sum(Poco::Checksum::TYPE_CRC32);
    sum.update(checked);
    return number(content.size(), 4) + checked + number(sum.checksum(), 4);
}

/// Of four channels of 16 bits, all black.
std::string png(std::uint32_t width, std::uint32_t height) {
    std::ostringstream packed;
    Poco::DeflatingOutputStream pack(packed, Poco::DeflatingStreamBuf::STREAM_ZLIB, 1);
    const std::string line(1 + width * 8, '\0');
    for (std::uint32_t y = 0; y < height; ++y) {
        pack << line;
    }
    pack.close();
    return "\x89PNG\r\n\x1a\n" +
           pngChunk("IHDR", number(width, 4) + number(height, 4) + std::string("\x10\x06\0\0\0", 5)) +
           pngChunk("IDAT", packed.str()) + pngChunk("IEND", {});
}

} // namespace

std::string constantFlac(std::uint32_t rate, int frames) {
    constexpr std::uint32_t block = 65'535;
    const auto info = number(block, 2) + number(block, 2) + number(0, 6) +
                      number(static_cast<std::uint64_t>(rate) << 44 | 15ULL << 36, 8) + number(0, 16);
    std::string file = "fLaC" + number(0x80000022, 4) + info;
    for (int i = 0; i < frames; ++i) {
        const auto index = i < 0x80 ? number(static_cast<std::uint64_t>(i), 1)
                                    : number(0xC0 | static_cast<std::uint64_t>(i >> 6), 1) +
                                          number(0x80 | static_cast<std::uint64_t>(i & 0x3F), 1);
        auto frame = number(0xFFF87008, 4) + index + number(block - 1, 2);
        frame += number(checksum(frame, 8, 0x07), 1);
        frame += number(0, 1) + number(1000, 2);
        file += frame + number(checksum(frame, 16, 0x8005), 2);
    }
    return file;
}

std::string wavWith(const std::vector<std::int16_t>& interleaved, std::uint16_t channels,
                    std::uint32_t rate) {
    auto bytes = wavFile(interleaved);
    const auto put = [&](std::size_t at, auto value) {
        std::memcpy(bytes.data() + at, &value, sizeof value);
    };
    put(22, channels);
    put(24, rate);
    put(28, static_cast<std::uint32_t>(rate * channels * 2));
    put(32, static_cast<std::uint16_t>(channels * 2));
    return bytes;
}

std::string filmOfOnePng(std::uint32_t width, std::uint32_t height) {
    const auto picture = png(width, height);
    const auto entry = atom("png ", {number(1, 8), std::string(16, '\0'), number(width, 2), number(height, 2),
                                     number(0x480000, 4), number(0x480000, 4), number(0, 4), number(1, 2),
                                     std::string(32, '\0'), number(24, 2), number(0xFFFF, 2)});
    return film("vide", entry, picture, 1, static_cast<std::uint32_t>(picture.size()));
}

std::string filmOfManySamples(std::uint32_t count) {
    const auto entry = atom("mp4a", {number(1, 8), number(0, 8), number(1, 2), number(16, 2), number(0, 4),
                                     number(8000, 2), number(0, 2)});
    return film("soun", entry, std::string(1000, '\x40'), count, 1);
}

} // namespace velmora::server
