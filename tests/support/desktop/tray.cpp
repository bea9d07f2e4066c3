#include "support/desktop/tray.h"

#include "support/desktop/wait_until.h"

#include <QElapsedTimer>

namespace velmora::test {
namespace {

constexpr int smallest = 16;    // an icon; what a tray without icons shows is less
constexpr qint64 settled = 300; // milliseconds; a tray moves a new icon about before it has its place

/// The first mapped window of another program that sits in one of the tray's, looked for below `window`.
std::optional<QRect> findIcon(X11Connection& x, xcb_window_t window, uint32_t tray) {
    const XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(x.get(), xcb_query_tree(x.get(), window), nullptr));
    for (int i = 0; tree && i < xcb_query_tree_children_length(tree.get()); ++i) {
        const xcb_window_t child = xcb_query_tree_children(tree.get())[i];
        if (const auto deeper = findIcon(x, child, tray))
            return deeper;
        if (x.clientOf(window) != tray || x.clientOf(child) == tray)
            continue;
        const XcbReply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(x.get(), xcb_get_window_attributes(x.get(), child), nullptr));
        const XcbReply<xcb_get_geometry_reply_t> size(
            xcb_get_geometry_reply(x.get(), xcb_get_geometry(x.get(), child), nullptr));
        const XcbReply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
            x.get(), xcb_translate_coordinates(x.get(), child, x.root(), 0, 0), nullptr));
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE && size && place &&
            size->width >= smallest && size->height >= smallest)
            return QRect(place->dst_x, place->dst_y, size->width, size->height);
    }
    return {};
}

} // namespace

Tray::Tray() {
    m_process.start(QStringLiteral("trayer"),
                    {QStringLiteral("--edge"), QStringLiteral("top"), QStringLiteral("--align"),
                     QStringLiteral("right"), QStringLiteral("--widthtype"), QStringLiteral("request"),
                     QStringLiteral("--height"), QStringLiteral("24")});
    m_process.waitForStarted();
}

Tray::~Tray() {
    m_process.terminate();
    m_process.waitForFinished();
}

std::optional<QRect> Tray::icon() {
    std::optional<QRect> found;
    QElapsedTimer unchanged;
    const bool stays = waitUntil([&] {
        const xcb_window_t owner = m_x.ownerOf(m_x.atom("_NET_SYSTEM_TRAY_S0"));
        if (owner == XCB_WINDOW_NONE)
            return false;
        const std::optional<QRect> now = findIcon(m_x, m_x.root(), m_x.clientOf(owner));
        if (std::exchange(found, now) != now || !unchanged.isValid())
            unchanged.start();
        return found && unchanged.hasExpired(settled);
    });
    return stays ? found : std::nullopt;
}

} // namespace velmora::test
