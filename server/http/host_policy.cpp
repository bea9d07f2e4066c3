#include "http/host_policy.h"

#include <Poco/Net/IPAddress.h>
#include <Poco/String.h>

#include <algorithm>

namespace velmora::server {

namespace {

std::string withoutPort(const std::string& host) {
    if (host.starts_with('[')) {
        const auto end = host.find(']');
        return end == std::string::npos ? std::string() : host.substr(1, end - 1);
    }
    return host.substr(0, host.find(':'));
}

} // namespace

HostPolicy::HostPolicy(const std::vector<std::string>& names) {
    m_names.emplace_back("localhost");
    for (const auto& name : names) {
        m_names.push_back(Poco::toLower(name));
    }
}

bool HostPolicy::accepts(const std::string& host) const {
    const auto name = Poco::toLower(withoutPort(host));
    if (std::ranges::find(m_names, name) != m_names.end()) {
        return true;
    }
    Poco::Net::IPAddress address;
    return Poco::Net::IPAddress::tryParse(name, address);
}

} // namespace velmora::server
