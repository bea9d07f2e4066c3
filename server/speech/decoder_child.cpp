#include "speech/decoder_child.h"

#include "speech/sandbox.h"
#include "speech/sound_file.h"

#include <poll.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <string_view>
#include <system_error>

namespace velmora::server {

namespace {

/// Ends this process together with its parent.
void followParent() {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    // It may have gone before that, and then nobody holds the other end.
    pollfd output{STDOUT_FILENO, 0, 0};
    if (::poll(&output, 1, 0) > 0) {
        ::_exit(EXIT_FAILURE);
    }
}

template<typename T>
void append(std::string& bytes, const T* values, std::size_t count) {
    bytes.append(reinterpret_cast<const char*>(values), count * sizeof(T));
}

void write(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (count < 0) {
            throw std::system_error(errno, std::generic_category(), "write");
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

/// The length, then slices, each behind its size; the last is empty. Nothing is written before the first
/// sound is there.
DecoderExit decode() {
    try {
        enterSandbox();
    } catch (const std::system_error&) {
        return DecoderExit::NotConfined;
    }
    try {
        SoundFile file(STDIN_FILENO);
        std::string message;
        const std::int64_t length = file.announcedDuration() ? file.announcedDuration()->count() : noLength;
        append(message, &length, 1);
        for (bool more = true; more;) {
            const auto slice = file.read();
            const auto size = static_cast<std::uint32_t>(slice.size());
            append(message, &size, 1);
            append(message, slice.data(), slice.size());
            write(message);
            message.clear();
            more = !slice.empty();
        }
        return DecoderExit::Done;
    } catch (const std::exception&) {
        return DecoderExit::NoSound;
    }
}

} // namespace

void runDecoderChild(int argc, char** argv) {
    if (argc != 2 || std::strcmp(argv[1], decodeArgument) != 0) {
        return;
    }
    followParent();
    // At once: nobody waits for what the end of a program tidies up.
    ::_exit(static_cast<int>(decode()));
}

} // namespace velmora::server
