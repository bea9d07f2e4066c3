#pragma once

#include "platform/linux/x11_connection.h"

#include <QPoint>

#include <xcb/xtest.h>

namespace velmora::test {

/// Clicks as a mouse does.
class PointerHand {
public:
    enum Button : uint8_t { Left = 1, Middle = 2, Right = 3 };

    void click(const QPoint& place, Button button) const {
        xcb_connection_t* x = m_connection.get();
        const auto fake = [&](uint8_t type, uint8_t detail) {
            xcb_test_fake_input(x, type, detail, XCB_CURRENT_TIME, m_connection.root(),
                                static_cast<int16_t>(place.x()), static_cast<int16_t>(place.y()), 0);
        };
        fake(XCB_MOTION_NOTIFY, 0);
        fake(XCB_BUTTON_PRESS, button);
        fake(XCB_BUTTON_RELEASE, button);
        xcb_flush(x);
    }

private:
    X11Connection m_connection;
};

} // namespace velmora::test
