#include "app/descriptor_limit.h"

#include <sys/resource.h>

#include <algorithm>

namespace velmora::server {

namespace {

/// More than is ever needed.
constexpr rlim_t enough = 8192;

rlimit limits() {
    rlimit limits{};
    ::getrlimit(RLIMIT_NOFILE, &limits);
    return limits;
}

} // namespace

std::size_t descriptorLimit() {
    return std::min(limits().rlim_cur, enough);
}

void raiseDescriptorLimit() {
    auto wanted = limits();
    wanted.rlim_cur = std::max(wanted.rlim_cur, std::min(wanted.rlim_max, enough));
    ::setrlimit(RLIMIT_NOFILE, &wanted);
}

} // namespace velmora::server
