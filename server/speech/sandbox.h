#pragma once

#include <chrono>

namespace velmora::server {

/// What a process in the sandbox may take of the processor in all, unless its parent raises it.
inline constexpr std::chrono::seconds sandboxTime{1};

/// Takes from this process all it doesn't need to work on what it has open: from here on it can open and make
/// nothing, and its memory and processor time are bounded. Fails with std::system_error.
void enterSandbox();

} // namespace velmora::server
