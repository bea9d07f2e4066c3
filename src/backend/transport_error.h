#pragma once

#include "foundation/error.h"

namespace velmora {

/// The request got no usable reply: no network, a closed connection, a timeout, a cancellation.
class TransportError : public PlainError {
public:
    using PlainError::PlainError;
};

} // namespace velmora
