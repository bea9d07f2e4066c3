#include "read_watch.h"

using namespace std::chrono_literals;

namespace velmora::bench {

ReadWatch::ReadWatch() {
    const auto front = m_x.property32(m_x.root(), m_x.atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
    selectEvents(m_x.root(), m_x.clientOf(front));
    m_x.flush();
    m_thread = std::jthread([this](const std::stop_token& stop) { watch(stop); });
}

std::vector<Clock::time_point> ReadWatch::answersTaken() const {
    const std::lock_guard lock(m_mutex);
    return m_taken;
}

void ReadWatch::selectEvents(xcb_window_t window, uint32_t client) {
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

void ReadWatch::watch(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
        const XcbEvent event = m_x.waitForEvent(50ms);
        const auto now = Clock::now();
        if (!event || typeOf(*event) != XCB_PROPERTY_NOTIFY)
            continue;
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
        if (change.atom != m_property || change.state != XCB_PROPERTY_DELETE)
            continue;
        const std::lock_guard lock(m_mutex);
        m_taken.push_back(now);
    }
}

} // namespace velmora::bench
