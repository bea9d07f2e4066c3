#pragma once

#include "platform/linux/x11_connection.h"
#include "platform/paste_system.h"

#include <QStringList>

#include <optional>

namespace velmora {

/// Finds the window that has the keyboard focus and posts the keys by which it pastes.
class X11KeyPoster {
public:
    /// `moreTerminals` are WM_CLASS names, of either part and any case, beside those that are known.
    X11KeyPoster(X11Connection& connection, const QStringList& moreTerminals);

    /// None when no window has the focus. A terminal pastes the PRIMARY selection on Shift+Insert.
    [[nodiscard]] std::optional<PasteTarget> focusedTarget();
    /// Posts the keys if the target has the focus, and tells whether it has. The server has worked them off
    /// when it returns.
    bool postPasteChord(const PasteTarget& target);

private:
    [[nodiscard]] xcb_window_t focusedWindow();
    [[nodiscard]] xcb_window_t topLevelOf(xcb_window_t window);
    [[nodiscard]] bool isTerminal(xcb_window_t window);

    X11Connection& m_connection;
    QStringList m_terminals;
};

} // namespace velmora
