#pragma once

#include "platform/linux/x11_connection.h"

#include <QPoint>
#include <QWindow>

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

    /// The innermost window there.
    [[nodiscard]] xcb_window_t windowAt(const QPoint& place) const {
        xcb_connection_t* x = m_connection.get();
        for (xcb_window_t window = m_connection.root();;) {
            const XcbReply<xcb_translate_coordinates_reply_t> reply(xcb_translate_coordinates_reply(
                x,
                xcb_translate_coordinates(x, m_connection.root(), window, static_cast<int16_t>(place.x()),
                                          static_cast<int16_t>(place.y())),
                nullptr));
            if (!reply || reply->child == XCB_WINDOW_NONE)
                return window;
            window = reply->child;
        }
    }
    /// Whether one of this program's own windows is what a click there would meet.
    [[nodiscard]] bool meetsOurs(const QPoint& place) const {
        QWindow own;
        own.create();
        return m_connection.clientOf(windowAt(place)) ==
               m_connection.clientOf(static_cast<xcb_window_t>(own.winId()));
    }

private:
    X11Connection m_connection;
};

} // namespace velmora::test
