#pragma once

#include "accounts/clock.h"

namespace velmora::server {

/// A clock that moves only when told to.
struct TestClock {
    std::chrono::system_clock::time_point now{std::chrono::seconds(1'800'000'000)};

    [[nodiscard]] Clock clock() {
        return [this] { return now; };
    }
    [[nodiscard]] SteadyClock steady() {
        return [this] { return std::chrono::steady_clock::time_point(now.time_since_epoch()); };
    }
};

} // namespace velmora::server
