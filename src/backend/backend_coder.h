#pragma once

#include "foundation/json_coder.h"

namespace velmora {

/// JSON as the backend writes and reads it.
inline constexpr json::Coder backendCoder{json::DateForm::ISO8601};

} // namespace velmora
