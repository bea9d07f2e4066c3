#pragma once

#include "accounts/account.h"

namespace velmora::server {

/// Who sent a request, and within which session.
struct Identity {
    Account account;
    std::string sessionId;
};

} // namespace velmora::server
