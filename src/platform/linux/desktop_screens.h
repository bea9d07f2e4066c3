#pragma once

#include "platform/screens.h"

#include <QByteArray>

#include <memory>

namespace velmora {

class X11Connection;

/// The screens of the session. Where there is no X server to tell which window has the focus, the main screen
/// is the primary one.
class DesktopScreens final : public Screens {
public:
    /// An empty display is the session's own.
    explicit DesktopScreens(const QByteArray& display = {});
    ~DesktopScreens() override;

    [[nodiscard]] std::optional<ScreenArea> mainScreen() override;
    [[nodiscard]] std::optional<ScreenArea> screenAt(const QPoint& point) override;

private:
    /// In physical pixels; empty when no window has the focus.
    [[nodiscard]] QRect focusedWindow();

    std::unique_ptr<X11Connection> m_connection;
};

} // namespace velmora
