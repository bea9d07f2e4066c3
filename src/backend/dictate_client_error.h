#pragma once

#include "foundation/error.h"

namespace velmora {

/// A dictation that ended without the server's own word on it.
class DictateClientError : public PlainError {
public:
    using PlainError::PlainError;
};

} // namespace velmora
