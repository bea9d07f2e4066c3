#include "platform/linux/desktop_screens.h"

#include "platform/linux/x11_active_window.h"

#include <QGuiApplication>
#include <QScreen>

namespace velmora {
namespace {

std::optional<ScreenArea> areaOf(const QScreen* screen) {
    if (!screen)
        return std::nullopt;
    return ScreenArea{screen->geometry(), screen->availableGeometry(), 0};
}

// Qt leaves a screen's origin as the server has it and scales the rest.
QRect nativeFrame(const QScreen& screen) {
    return {screen.geometry().topLeft(), screen.geometry().size() * screen.devicePixelRatio()};
}

qint64 area(const QRect& rect) {
    return rect.isEmpty() ? 0 : qint64(rect.width()) * rect.height();
}

} // namespace

DesktopScreens::DesktopScreens(const QByteArray& display)
    : m_connection(std::make_unique<X11Connection>(display)) {}

DesktopScreens::~DesktopScreens() = default;

std::optional<ScreenArea> DesktopScreens::mainScreen() {
    const QRect window = focusedWindow();
    const QScreen* main = QGuiApplication::primaryScreen();
    qint64 largest = 0;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const qint64 covered = area(nativeFrame(*screen) & window);
        if (covered > largest) {
            largest = covered;
            main = screen;
        }
    }
    return areaOf(main);
}

std::optional<ScreenArea> DesktopScreens::screenAt(const QPoint& point) {
    const QScreen* screen = QGuiApplication::screenAt(point);
    return screen ? areaOf(screen) : mainScreen();
}

QRect DesktopScreens::focusedWindow() {
    X11Connection& x = *m_connection;
    x.discardEvents();
    const xcb_window_t window = x11ActiveWindow(x);
    if (window == XCB_WINDOW_NONE)
        return {};
    const auto size = xcb_get_geometry(x.get(), window);
    const auto corner = xcb_translate_coordinates(x.get(), window, x.root(), 0, 0);
    const XcbReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(x.get(), size, nullptr));
    const XcbReply<xcb_translate_coordinates_reply_t> origin(
        xcb_translate_coordinates_reply(x.get(), corner, nullptr));
    if (!geometry || !origin)
        return {}; // it is gone by now
    return {origin->dst_x, origin->dst_y, geometry->width, geometry->height};
}

} // namespace velmora
