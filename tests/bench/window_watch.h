#pragma once

#include "platform/linux/x11_connection.h"
#include "samples.h"

#include <QHash>
#include <QRect>

namespace velmora::bench {

/// Tells when windows of other programs are drawn, as the X server sees it: the moment in which their pixels
/// are there to be shown.
class WindowWatch {
public:
    WindowWatch();

    struct Drawn {
        xcb_window_t window = 0;
        Clock::time_point at;
    };
    /// The next window of at least that size that appears, once more than half of it is drawn. Throws
    /// NotMeasured when none comes within ten seconds.
    Drawn waitForNew(QSize atLeast);
    /// When the window has drawn at least that many pixels since `since`. It must be one of those that
    /// appeared since the watch began. Throws NotMeasured.
    Clock::time_point waitForDrawing(xcb_window_t window, int pixels);
    /// Waits until the window is gone.
    void waitForGone(xcb_window_t window);
    /// Forgets what has happened so far.
    void forget();

private:
    struct Window {
        QSize size;
        bool isMapped = false;
        int drawnPixels = 0;
        Clock::time_point drawnAt;
    };

    template<typename Condition>
    void waitUntil(const char* what, const Condition& condition);
    void handle(const xcb_generic_event_t& event);
    void watchDrawing(xcb_window_t window);

    X11Connection m_x;
    uint8_t m_damageEvent = 0;
    QHash<xcb_window_t, Window> m_windows;
};

} // namespace velmora::bench
