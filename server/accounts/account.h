#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace velmora::server {

struct Account {
    std::string id;
    std::string email;
    std::optional<std::chrono::sys_seconds> emailVerifiedAt;
    bool isAdmin = false;
    std::chrono::sys_seconds createdAt;

    bool operator==(const Account&) const = default;
};

} // namespace velmora::server
