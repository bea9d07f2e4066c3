#pragma once

#include <chrono>
#include <functional>

namespace velmora::test {

/// Runs the event loop until the condition holds; false when it doesn't in that time, which is long enough
/// for a machine that is busy with other things.
bool waitUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds timeout = std::chrono::seconds(30));

} // namespace velmora::test
