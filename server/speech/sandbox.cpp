#include "speech/sandbox.h"

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <fstream>
#include <system_error>
#include <vector>

namespace velmora::server {

namespace {

/// On top of what the program and its libraries are mapped to. The largest good files need a tenth of it.
constexpr rlim_t memory = 128 * 1024 * 1024;

void require(bool done, const char* what) {
    if (!done) {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

void limit(__rlimit_resource resource, rlim_t most) {
    rlimit limits{};
    require(::getrlimit(resource, &limits) == 0, "getrlimit");
    limits.rlim_cur = std::min(most, limits.rlim_max);
    // Processor time is raised while there is something to show for it; nothing else is.
    if (resource != RLIMIT_CPU) {
        limits.rlim_max = limits.rlim_cur;
    }
    require(::setrlimit(resource, &limits) == 0, "setrlimit");
}

rlim_t mappedMemory() {
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    require(pages > 0, "reading /proc/self/statm");
    return pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE));
}

#if defined(__x86_64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_AARCH64;
#else
#error "which calls are those of this architecture?"
#endif

/// Reading, writing and memory. Everything else fails as if it was forbidden to this user: libraries try
/// things, such as the time zone's file, that they can do without. The stack of signals is what the address
/// sanitizer looks after when a process ends.
constexpr std::uint32_t allowedCalls[] = {
    __NR_read,   __NR_write,      __NR_lseek,        __NR_brk,           __NR_mmap,
    __NR_munmap, __NR_mremap,     __NR_futex,        __NR_clock_gettime, __NR_madvise,
    __NR_exit,   __NR_exit_group, __NR_rt_sigreturn, __NR_sigaltstack,
};

void allowFewCalls() {
    constexpr auto load = [](std::size_t offset) {
        return sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset));
    };
    constexpr auto answer = [](std::uint32_t action) {
        return sock_filter BPF_STMT(BPF_RET | BPF_K, action);
    };
    constexpr auto skipUnless = [](std::uint32_t value) {
        return sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, value, 0, 1);
    };
    std::vector<sock_filter> filter{load(offsetof(seccomp_data, arch)),
                                    sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, architecture, 1, 0),
                                    answer(SECCOMP_RET_KILL_PROCESS), load(offsetof(seccomp_data, nr))};
    for (const auto call : allowedCalls) {
        filter.insert(filter.end(), {skipUnless(call), answer(SECCOMP_RET_ALLOW)});
    }
    filter.push_back(answer(SECCOMP_RET_ERRNO | EPERM));
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    // A kernel may be built without it; the limits hold there too.
    require(::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0 || errno == EINVAL, "seccomp");
}

} // namespace

void enterSandbox() {
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_FSIZE, 0);
    limit(RLIMIT_CPU, static_cast<rlim_t>(sandboxTime.count()));
    limit(RLIMIT_AS, mappedMemory() + memory);
    limit(RLIMIT_NOFILE, 0);
    require(::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0, "no_new_privs");
    allowFewCalls();
}

} // namespace velmora::server
