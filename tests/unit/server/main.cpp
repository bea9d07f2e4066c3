#include "speech/decoder_child.h"

#include <gmock/gmock.h>
#include <sodium.h>

#include <csignal>

int main(int argc, char** argv) {
    // The decoder starts the program it is in.
    velmora::server::runDecoderChild(argc, argv);
    std::signal(SIGPIPE, SIG_IGN);
    if (sodium_init() < 0) {
        return EXIT_FAILURE;
    }
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
