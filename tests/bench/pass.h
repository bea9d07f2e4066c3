#pragma once

#include "samples.h"
#include "support/desktop/wait_until.h"

namespace velmora::bench {

/// Lets that time go by, with the event loop running.
inline void pass(std::chrono::milliseconds time) {
    const auto end = Clock::now() + time;
    test::waitUntil([end] { return Clock::now() >= end; }, time + std::chrono::seconds(10));
}

} // namespace velmora::bench
