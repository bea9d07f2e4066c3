#pragma once

#include <string>
#include <vector>

namespace velmora::server {

/// Which Host headers are answered. A page that rebinds its own name to this machine's address sends that
/// name: so addresses and "localhost" are fine, and names only when the operator gave them.
class HostPolicy {
public:
    explicit HostPolicy(const std::vector<std::string>& names);

    /// `host` is the header's value, with or without a port.
    [[nodiscard]] bool accepts(const std::string& host) const;

private:
    std::vector<std::string> m_names;
};

} // namespace velmora::server
