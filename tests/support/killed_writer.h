#pragma once

#include <QtGlobal>

#include <functional>

namespace velmora::test {

/// Lets another process write, and kills it (SIGKILL) when one of its files has so many bytes and it writes
/// on. False when it has come to its end before.
[[nodiscard]] bool killAtByte(qint64 bytes, const std::function<void()>& write);

} // namespace velmora::test
