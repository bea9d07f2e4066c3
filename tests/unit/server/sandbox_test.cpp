#include "speech/sandbox.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>

namespace velmora::server {
namespace {

using testing::ExitedWithCode;
using testing::KilledBySignal;

constexpr auto done = 0;
constexpr auto notPermitted = 1;
constexpr auto failedOtherwise = 2;

/// For a process of its own: makes the call inside and ends with what came of it.
[[noreturn]] void endWith(long (*call)()) {
    enterSandbox();
    const auto result = call();
    ::_exit(result >= 0 ? done : errno == EPERM ? notPermitted : failedOtherwise);
}

long map(std::size_t megabytes) {
    return ::mmap(nullptr, megabytes * 1024 * 1024, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1,
                  0) == MAP_FAILED
               ? -1
               : 0;
}

TEST(SandboxDeathTest, Memory_IsBounded) {
    EXPECT_EXIT(endWith([] { return map(100); }), ExitedWithCode(done), "");
    EXPECT_EXIT(endWith([] { return map(130); }), ExitedWithCode(failedOtherwise), "");
}

TEST(SandboxDeathTest, ProcessorTime_IsBounded) {
    EXPECT_EXIT(endWith([] {
                    while (std::clock() < 10 * CLOCKS_PER_SEC) {
                    }
                    return 0L;
                }),
                KilledBySignal(SIGXCPU), "");
}

TEST(SandboxDeathTest, NothingIsOpened) {
    EXPECT_EXIT(endWith([] { return static_cast<long>(::open("/dev/null", O_RDONLY)); }),
                ExitedWithCode(notPermitted), "");
    EXPECT_EXIT(endWith([] { return static_cast<long>(::socket(AF_INET, SOCK_STREAM, 0)); }),
                ExitedWithCode(notPermitted), "");
    EXPECT_EXIT(endWith([] { return static_cast<long>(::socket(AF_UNIX, SOCK_STREAM, 0)); }),
                ExitedWithCode(notPermitted), "");
}

TEST(SandboxDeathTest, NoProcessIsMade_AndNoneTouched) {
    EXPECT_EXIT(endWith([] { return static_cast<long>(::fork()); }), ExitedWithCode(notPermitted), "");
    EXPECT_EXIT(endWith([] { return static_cast<long>(::execl("/bin/true", "true", nullptr)); }),
                ExitedWithCode(notPermitted), "");
    EXPECT_EXIT(endWith([] { return static_cast<long>(::kill(::getppid(), 0)); }),
                ExitedWithCode(notPermitted), "");
}

#if defined(__x86_64__)
TEST(SandboxDeathTest, CallsIn32BitManner_End) {
    // There 1 is to exit, here it is to write, which is allowed. Where the kernel has no such calls, that
    // kills too.
    EXPECT_EXIT(
        endWith([] {
            asm volatile("int $0x80" ::"a"(1), "b"(0));
            return 0L;
        }),
        [](int status) { return WIFSIGNALED(status); }, "");
}
#endif

TEST(SandboxDeathTest, Limits_CannotBeRaised) {
    EXPECT_EXIT(endWith([] {
                    const rlimit more{RLIM_INFINITY, RLIM_INFINITY};
                    return static_cast<long>(::setrlimit(RLIMIT_CPU, &more));
                }),
                ExitedWithCode(notPermitted), "");
}

} // namespace
} // namespace velmora::server
