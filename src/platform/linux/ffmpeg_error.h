#pragma once

#include "foundation/error.h"

namespace velmora {

/// A failure of libav, in the library's words; of a full disk the user is told which it is.
class FfmpegError final : public PlainError {
public:
    /// `what` says what was tried, a path where a file is concerned; `code` is libav's, negative.
    FfmpegError(const QString& what, int code);
};

/// Passes a code of libav on, and throws when it is negative.
int checkFfmpeg(const QString& what, int code);

} // namespace velmora
