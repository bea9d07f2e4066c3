#pragma once

#include "samples.h"

#include <QString>

namespace velmora::bench {

inline const QString bareKeysName = QStringLiteral("a key's way to a bare window");

/// From a key press to its arrival at a window that has nothing to do, in milliseconds.
[[nodiscard]] Samples bareKeys(int runs);

} // namespace velmora::bench
