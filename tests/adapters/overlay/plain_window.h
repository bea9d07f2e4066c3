#pragma once

#include "platform/linux/x11_connection.h"

#include <QRect>

namespace velmora::test {

/// A window of another program, which writes down the clicks it gets.
class PlainWindow {
public:
    enum class Kind {
        Normal,
        FullScreen,
        Dock ///< takes its height from the screen's top edge
    };

    explicit PlainWindow(Kind kind, const QRect& frame = {0, 0, 300, 200});

    [[nodiscard]] xcb_window_t id() const { return m_window; }
    /// How often a button was pressed in it so far.
    [[nodiscard]] int clicks();

private:
    void setAtoms(const char* property, const char* value);

    X11Connection m_x;
    xcb_window_t m_window;
    int m_clicks = 0;
};

/// The windows of the root from the lowest to the topmost, each by its frame.
[[nodiscard]] std::vector<xcb_window_t> stackingOrder(X11Connection& x);
/// The child of the root that the window lies in: its frame, or itself.
[[nodiscard]] xcb_window_t frameOf(X11Connection& x, xcb_window_t window);
[[nodiscard]] QRect geometryOf(X11Connection& x, xcb_window_t window);

} // namespace velmora::test
