#include "selection_watch.h"

using namespace std::chrono_literals;

namespace velmora::bench {

SelectionWatch::SelectionWatch() {
    const auto front = m_x.property32(m_x.root(), m_x.atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
    selectEvents(m_x.root(), m_x.clientOf(front));
    m_x.flush();
    m_thread = std::jthread([this](const std::stop_token& stop) { watch(stop); });
}

Clock::time_point SelectionWatch::last() const {
    const std::lock_guard lock(m_mutex);
    return m_last;
}

void SelectionWatch::selectEvents(xcb_window_t window, uint32_t client) {
    if (m_x.clientOf(window) == client) {
        const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_x.get(), window, XCB_CW_EVENT_MASK, &mask);
    }
    const XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(m_x.get(), xcb_query_tree(m_x.get(), window), nullptr));
    if (!tree)
        return;
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i)
        selectEvents(children[i], client);
}

// Titles, states and the like belong to window managers.
bool SelectionWatch::isOfAnAnswer(xcb_atom_t property) {
    if (!m_answers.contains(property)) {
        const QByteArray name = m_x.atomName(property);
        m_answers[property] = !name.startsWith("_NET_") && !name.startsWith("WM_") &&
                              !name.startsWith("_GTK_") && !name.startsWith("_MOTIF_") &&
                              !name.startsWith("_OB_") && !name.startsWith("_KDE_");
    }
    return m_answers[property];
}

void SelectionWatch::watch(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
        const XcbEvent event = m_x.waitForEvent(50ms);
        const auto now = Clock::now();
        if (!event || typeOf(*event) != XCB_PROPERTY_NOTIFY ||
            !isOfAnAnswer(reinterpret_cast<const xcb_property_notify_event_t&>(*event).atom))
            continue;
        const std::lock_guard lock(m_mutex);
        m_last = now;
    }
}

} // namespace velmora::bench
