#include "bare_window.h"

namespace velmora::bench {

BareWindow::BareWindow(const QRect& place, bool managed)
    : m_window(xcb_generate_id(m_x.get())) {
    const uint32_t values[] = {0xff808080, managed ? 0U : 1U};
    xcb_create_window(m_x.get(), XCB_COPY_FROM_PARENT, m_window, m_x.root(), static_cast<int16_t>(place.x()),
                      static_cast<int16_t>(place.y()), static_cast<uint16_t>(place.width()),
                      static_cast<uint16_t>(place.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
    xcb_map_window(m_x.get(), m_window);
    m_x.flush();
}

BareWindow::~BareWindow() {
    xcb_destroy_window(m_x.get(), m_window);
    m_x.sync();
}

} // namespace velmora::bench
