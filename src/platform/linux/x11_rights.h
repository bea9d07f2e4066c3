#pragma once

#include <QByteArray>

namespace velmora {

/// Whether keys can be watched whoever has the focus. Within a Wayland session the X server hears only what
/// is typed into its own windows, so there the answer is no. An empty name is the session's display
/// ($DISPLAY).
[[nodiscard]] bool canWatchKeys(const QByteArray& display = {});
/// Whether text can be put on the clipboard and a paste chord be posted.
[[nodiscard]] bool canPostPastes(const QByteArray& display = {});

} // namespace velmora
