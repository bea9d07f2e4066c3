#include "plain_window.h"

namespace velmora::test {

PlainWindow::PlainWindow(Kind kind, const QRect& frame)
    : m_window(xcb_generate_id(m_x.get())) {
    constexpr uint32_t events = XCB_EVENT_MASK_BUTTON_PRESS;
    xcb_create_window(m_x.get(), XCB_COPY_FROM_PARENT, m_window, m_x.root(), static_cast<int16_t>(frame.x()),
                      static_cast<int16_t>(frame.y()), static_cast<uint16_t>(frame.width()),
                      static_cast<uint16_t>(frame.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    // Position asked for by the user (1) and by the program (4): the window manager leaves it there.
    constexpr std::array<uint32_t, 18> placed{1 | 4};
    xcb_change_property(m_x.get(), XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, placed.size(), placed.data());
    if (kind == Kind::FullScreen)
        setAtoms("_NET_WM_STATE", "_NET_WM_STATE_FULLSCREEN");
    if (kind == Kind::Dock) {
        setAtoms("_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK");
        const std::array<uint32_t, 4> strut{0, 0, static_cast<uint32_t>(frame.height()), 0};
        xcb_change_property(m_x.get(), XCB_PROP_MODE_REPLACE, m_window, m_x.atom("_NET_WM_STRUT"),
                            XCB_ATOM_CARDINAL, 32, strut.size(), strut.data());
    }
    xcb_map_window(m_x.get(), m_window);
    m_x.flush();
}

void PlainWindow::setAtoms(const char* property, const char* value) {
    const xcb_atom_t atom = m_x.atom(value);
    xcb_change_property(m_x.get(), XCB_PROP_MODE_REPLACE, m_window, m_x.atom(property), XCB_ATOM_ATOM, 32, 1,
                        &atom);
}

int PlainWindow::clicks() {
    m_x.sync();
    while (const XcbEvent event = m_x.nextEvent()) {
        if (typeOf(*event) == XCB_BUTTON_PRESS)
            ++m_clicks;
    }
    return m_clicks;
}

std::vector<xcb_window_t> stackingOrder(X11Connection& x) {
    const XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(x.get(), xcb_query_tree(x.get(), x.root()), nullptr));
    if (!tree)
        return {};
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

xcb_window_t frameOf(X11Connection& x, xcb_window_t window) {
    for (;;) {
        const XcbReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(x.get(), xcb_query_tree(x.get(), window), nullptr));
        if (!tree || tree->parent == x.root() || tree->parent == XCB_WINDOW_NONE)
            return window;
        window = tree->parent;
    }
}

QRect geometryOf(X11Connection& x, xcb_window_t window) {
    const XcbReply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(x.get(), xcb_get_geometry(x.get(), window), nullptr));
    const XcbReply<xcb_translate_coordinates_reply_t> origin(xcb_translate_coordinates_reply(
        x.get(), xcb_translate_coordinates(x.get(), window, x.root(), 0, 0), nullptr));
    if (!geometry || !origin)
        return {};
    return {origin->dst_x, origin->dst_y, geometry->width, geometry->height};
}

} // namespace velmora::test
