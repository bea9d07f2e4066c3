#pragma once

namespace velmora {

/// The reply of calls whose reply body doesn't matter; it isn't even looked at.
struct EmptyResponse {};

} // namespace velmora
