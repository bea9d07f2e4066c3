#include "speech/decoder_child.h"

#include "speech/sandbox.h"
#include "speech/sound_file.h"
#include "speech/sound_slice.h"

#include <poll.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
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

/// Nothing is written before the first sound is there.
DecoderExit decode() {
    try {
        enterSandbox();
    } catch (const std::system_error&) {
        return DecoderExit::NotConfined;
    }
    try {
        SoundFile file(STDIN_FILENO);
        SoundSlice slice{.announced = file.announcedDuration(), .samples = {}};
        do {
            slice.samples = file.read();
            writeSlice(STDOUT_FILENO, slice);
        } while (!slice.samples.empty());
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
