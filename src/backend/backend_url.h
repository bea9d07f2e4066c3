#pragma once

#include "foundation/info_dictionary.h"

#include <QUrl>

namespace velmora {

/// The value of the "User-Agent" header towards the backend.
inline constexpr char backendUserAgent[] = "Velmora-macOS/0.1";

/// The key VelmorBackendURL as it stands, or the built-in default.
[[nodiscard]] QString backendURLText(const InfoDictionary& info);
/// The backend's root. Ends the process when the text is no URL: a wrong build must not start.
[[nodiscard]] QUrl backendURL(const InfoDictionary& info);
/// The key VelmorLandingURL as it stands, or the built-in default.
[[nodiscard]] QString landingURL(const InfoDictionary& info);

/// `base` with a path appended to its own, without the query and the fragment of `base`.
[[nodiscard]] QUrl appendingPathComponent(const QUrl& base, const QString& path);

} // namespace velmora
