#pragma once

#include <sys/resource.h>

namespace velmora::server {

/// How many descriptors this process may have, while this object lives.
class DescriptorRlimit {
public:
    explicit DescriptorRlimit(rlim_t count) {
        ::getrlimit(RLIMIT_NOFILE, &m_before);
        auto limit = m_before;
        limit.rlim_cur = count;
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }
    ~DescriptorRlimit() { ::setrlimit(RLIMIT_NOFILE, &m_before); }
    DescriptorRlimit(const DescriptorRlimit&) = delete;
    DescriptorRlimit& operator=(const DescriptorRlimit&) = delete;

private:
    rlimit m_before{};
};

} // namespace velmora::server
