#pragma once

#include "platform/linux/x11_connection.h"

#include <QRect>

namespace velmora::bench {

/// A window with nothing in it, made and mapped at once: what the X server alone takes, and the window
/// manager unless it is left out. Goes with the object.
class BareWindow {
public:
    BareWindow(const QRect& place, bool managed);
    ~BareWindow();
    BareWindow(const BareWindow&) = delete;
    BareWindow& operator=(const BareWindow&) = delete;

private:
    X11Connection m_x;
    xcb_window_t m_window;
};

} // namespace velmora::bench
