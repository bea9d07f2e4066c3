#pragma once

#include "http/exchange.h"

namespace velmora::server {

/// Tells a client when to try again, if that is known.
inline void setRetryAfter(Exchange& exchange, std::chrono::seconds time) {
    if (time > std::chrono::seconds::zero()) {
        exchange.setReplyHeader("Retry-After", std::to_string(time.count()));
    }
}

} // namespace velmora::server
