#include "fuzz.h"
#include "speech/pause_cutter.h"
#include "speech/sample_rate.h"
#include "speech/sound_file.h"

#include <sys/mman.h>
#include <unistd.h>

extern "C" {
#include <libavutil/mem.h>
}

namespace {

using velmora::fuzz::require;
using namespace velmora::server;

/// A file in memory.
class File {
public:
    File(const std::uint8_t* data, std::size_t size)
        : m_descriptor(::memfd_create("sound", MFD_CLOEXEC)) {
        require(m_descriptor >= 0 && ::write(m_descriptor, data, size) == static_cast<ssize_t>(size),
                "a file can be written");
    }
    ~File() { ::close(m_descriptor); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    [[nodiscard]] int descriptor() const { return m_descriptor; }

private:
    int m_descriptor;
};

constexpr std::chrono::seconds longest{60};
constexpr PieceLimits limits{};

} // namespace

/// The input is a file of sound, which goes the way of an upload to the pieces that are recognised.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // In the server the sandbox bounds it.
    av_max_alloc(std::size_t{64} * 1024 * 1024);
    const File file(data, size);
    PauseCutter cutter(limits);
    std::size_t heard = 0;
    std::size_t cut = 0;
    const auto takePieces = [&] {
        while (const auto piece = cutter.next()) {
            require(piece->size() <= samplesIn(limits.longest), "a piece is no longer than the longest");
            cut += piece->size();
        }
    };
    try {
        SoundFile sound(file.descriptor());
        for (auto slice = sound.read(); !slice.empty() && heard < samplesIn(longest); slice = sound.read()) {
            require(slice.size() <= sliceSize, "a slice is no larger than slices are");
            heard += slice.size();
            cutter.push(slice);
            takePieces();
        }
    } catch (const AudioError&) {
        // What came before it counts.
    }
    cutter.finish();
    takePieces();
    require(cut <= heard, "what is cut was heard");
    return 0;
}
