#include "clipboard_manager.h"

#include "support/desktop/x11_selection_reader.h"

namespace velmora::test {

using namespace std::chrono_literals;

ClipboardManager::ClipboardManager() {
    const xcb_atom_t selection = m_x.atom("CLIPBOARD_MANAGER");
    xcb_set_selection_owner(m_x.get(), m_x.createWindow(XCB_EVENT_MASK_NO_EVENT), selection,
                            XCB_CURRENT_TIME);
    [[maybe_unused]] const xcb_window_t sync = m_x.ownerOf(selection);
    m_thread = std::jthread([this](const std::stop_token& stop) { serve(stop); });
}

ClipboardManager::~ClipboardManager() = default;

std::optional<QString> ClipboardManager::saved() {
    m_thread.request_stop();
    m_thread.join();
    return m_saved;
}

void ClipboardManager::serve(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
        const XcbEvent event = m_x.waitForEvent(10ms);
        if (event && typeOf(*event) == XCB_SELECTION_REQUEST)
            answer(reinterpret_cast<const xcb_selection_request_event_t&>(*event));
    }
}

void ClipboardManager::answer(const xcb_selection_request_event_t& request) {
    m_saved = X11SelectionReader().read("CLIPBOARD");
    xcb_selection_notify_event_t done{};
    done.response_type = XCB_SELECTION_NOTIFY;
    done.time = request.time;
    done.requestor = request.requestor;
    done.selection = request.selection;
    done.target = request.target;
    done.property = request.property;
    xcb_send_event(m_x.get(), false, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&done));
    m_x.flush();
}

} // namespace velmora::test
