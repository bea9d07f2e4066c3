#pragma once

#include "platform/linux/x11_connection.h"

#include <QStringList>

#include <optional>

namespace velmora {

/// Finds the window that has the keyboard focus and posts the keys by which it pastes.
class X11KeyPoster {
public:
    struct Target {
        uint32_t client = 0;     ///< the program's connection, see X11Connection::clientOf
        bool isTerminal = false; ///< pastes the PRIMARY selection on Shift+Insert
    };

    /// `moreTerminals` are WM_CLASS names, of either part and any case, beside those that are known.
    X11KeyPoster(X11Connection& connection, const QStringList& moreTerminals);

    /// None when no window has the focus.
    [[nodiscard]] std::optional<Target> focusedTarget();
    /// The keys are worked off by the server when it returns.
    void postPasteChord(const Target& target);

private:
    [[nodiscard]] bool isTerminal(xcb_window_t window);

    X11Connection& m_connection;
    QStringList m_terminals;
};

} // namespace velmora
