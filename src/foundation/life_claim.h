#pragma once

#include <QString>

namespace velmora {

/// Marks an open file or folder as one that a living process works with; the mark goes with the process,
/// however that ends. False when the path leads to something else by now: who clears up may have been
/// quicker.
[[nodiscard]] bool claimForLife(int descriptor, const QString& path);

/// Whether no living process has claimed the file or folder. Where the file system knows no locks, none is
/// abandoned. Nobody can claim it before the descriptor is closed.
[[nodiscard]] bool isAbandoned(int descriptor);

} // namespace velmora
