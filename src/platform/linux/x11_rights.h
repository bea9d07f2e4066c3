#pragma once

#include "platform/linux/retry_pause.h"
#include "platform/linux/x11_connection.h"

namespace velmora {

/// What an X server lets programs do. Asks over one connection, which it keeps as long as the server does.
class X11Rights {
public:
    /// An empty name is the session's display ($DISPLAY).
    explicit X11Rights(QByteArray display = {});

    /// Whether keys can be watched whoever has the focus. Within a Wayland session the X server hears only
    /// what is typed into its own windows, so there the answer is no.
    [[nodiscard]] bool canWatchKeys();
    /// Whether text can be put on the clipboard and a paste chord be posted.
    [[nodiscard]] bool canPostPastes();

private:
    void askServer();

    const QByteArray m_display;
    std::unique_ptr<X11Connection> m_connection; // of which the answers are
    RetryPause m_pause;
    bool m_canWatchKeys = false;
    bool m_canPostPastes = false;
};

} // namespace velmora
