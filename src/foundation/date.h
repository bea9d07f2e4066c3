#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace velmora {

/// A moment of the wall clock, UTC.
using Date = std::chrono::sys_time<std::chrono::microseconds>;

/// Seconds since 1970-01-01 00:00:00 UTC.
[[nodiscard]] double toUnixSeconds(Date date);
[[nodiscard]] Date fromUnixSeconds(double seconds);

/// Seconds since 2001-01-01 00:00:00 UTC.
[[nodiscard]] double toReferenceSeconds(Date date);
[[nodiscard]] Date fromReferenceSeconds(double seconds);

/// ISO 8601 internet date-time with or without fractions of a second ("2026-03-01T10:20:30.123Z",
/// "2026-03-01T13:20:30+03:00"); none for anything else.
[[nodiscard]] std::optional<Date> parseISO8601(const QString& text);
/// Without fractions, in UTC: "2026-03-01T10:20:30Z".
[[nodiscard]] QString formatISO8601(Date date);

} // namespace velmora
