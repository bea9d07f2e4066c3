#pragma once

#include <QString>

#include <optional>

namespace velmora {

/// The number under "exp" in a JWT's payload, seconds since 1970; none for anything that isn't such a token.
/// The signature is not checked.
[[nodiscard]] std::optional<double> jwtExpiry(const QString& token);

} // namespace velmora
