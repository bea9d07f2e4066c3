#include "platform/linux/x11_task_bar.h"

#include <QGuiApplication>
#include <QPlatformSurfaceEvent>
#include <QWindow>

namespace velmora {

X11TaskBar::X11TaskBar(QObject* parent)
    : QObject(parent) {
    if (QGuiApplication::platformName() == QLatin1String("xcb"))
        qGuiApp->installEventFilter(this);
}

bool X11TaskBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::PlatformSurface &&
        static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType() ==
            QPlatformSurfaceEvent::SurfaceCreated) {
        const auto* window = qobject_cast<QWindow*>(watched);
        if (window && window->type() == Qt::Tool)
            leaveOut(static_cast<xcb_window_t>(window->winId()));
    }
    return false;
}

// Before a window is mapped its state is a plain property, and Qt adds to what it finds there.
void X11TaskBar::leaveOut(xcb_window_t window) {
    m_connection.discardEvents();
    const std::array<xcb_atom_t, 2> states{m_connection.atom("_NET_WM_STATE_SKIP_TASKBAR"),
                                           m_connection.atom("_NET_WM_STATE_SKIP_PAGER")};
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_APPEND, window, m_connection.atom("_NET_WM_STATE"),
                        XCB_ATOM_ATOM, 32, states.size(), states.data());
    m_connection.sync(); // Qt reads it over a connection of its own
}

} // namespace velmora
