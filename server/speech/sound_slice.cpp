#include "speech/sound_slice.h"

#include "speech/sample_rate.h"

#include <unistd.h>

#include <cerrno>
#include <span>
#include <system_error>

namespace velmora::server {

namespace {

constexpr std::int64_t unannounced = -1;

/// In front of the samples.
struct Head {
    std::int64_t milliseconds = unannounced;
    std::uint64_t samples = 0;
};

void write(int descriptor, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const auto count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0) {
            throw std::system_error(errno, std::generic_category(), "write");
        }
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

bool read(int descriptor, std::span<std::byte> bytes) {
    while (!bytes.empty()) {
        const auto count = ::read(descriptor, bytes.data(), bytes.size());
        if (count == 0 || (count < 0 && errno != EINTR)) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return true;
}

} // namespace

void writeSlice(int descriptor, const SoundSlice& slice) {
    const Head head{slice.announced ? slice.announced->count() : unannounced, slice.samples.size()};
    write(descriptor, std::as_bytes(std::span(&head, 1)));
    write(descriptor, std::as_bytes(std::span(slice.samples)));
}

std::optional<SoundSlice> readSlice(int descriptor) {
    Head head;
    if (!read(descriptor, std::as_writable_bytes(std::span(&head, 1))) || head.samples > sliceSize) {
        return std::nullopt;
    }
    SoundSlice slice;
    if (head.milliseconds >= 0) {
        slice.announced = std::chrono::milliseconds(head.milliseconds);
    }
    slice.samples.resize(head.samples);
    if (!read(descriptor, std::as_writable_bytes(std::span(slice.samples)))) {
        return std::nullopt;
    }
    return slice;
}

} // namespace velmora::server
