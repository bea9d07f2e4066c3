#pragma once

#include "platform/linux/x11_connection.h"

#include <QProcess>
#include <QRect>

#include <optional>

namespace velmora::test {

/// A tray at the top right of the desktop, as panels without StatusNotifierItem have it. Ends with the
/// object.
class Tray {
public:
    Tray();
    ~Tray();
    Tray(const Tray&) = delete;
    Tray& operator=(const Tray&) = delete;

    /// Where the one icon in it is on the screen, waited for; none when no icon comes.
    [[nodiscard]] std::optional<QRect> icon();

private:
    QProcess m_process;
    X11Connection m_x;
};

} // namespace velmora::test
