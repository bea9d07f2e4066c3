#pragma once

#include "platform/linux/ffmpeg_handles.h"

#include <QString>

namespace velmora {

/// Creates a file for an MPEG-4 audio container; the caller adds its stream and writes the header. Throws
/// Error.
[[nodiscard]] FfmpegOutput createContainer(const QString& path);

/// Whether something can be heard of the file.
[[nodiscard]] bool holdsSound(const QString& path);

/// Turns a recording made of fragments, which survives the death of its writer, into the plain form that
/// every player can seek in and tell the length of. Whatever goes wrong, a readable file is left. Throws
/// Error.
void makePlainContainer(const QString& path);

} // namespace velmora
