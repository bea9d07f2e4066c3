#include "support/desktop/pointer.h"

#include <xcb/xtest.h>

namespace velmora::test {

void Pointer::moveTo(QPoint point) {
    fake(XCB_MOTION_NOTIFY, 0, point);
}

void Pointer::click(uint8_t button) {
    fake(XCB_BUTTON_PRESS, button);
    fake(XCB_BUTTON_RELEASE, button);
}

void Pointer::fake(uint8_t kind, uint8_t detail, QPoint point) {
    xcb_test_fake_input(m_x.get(), kind, detail, XCB_CURRENT_TIME, m_x.root(),
                        static_cast<int16_t>(point.x()), static_cast<int16_t>(point.y()), 0);
    m_x.sync();
}

} // namespace velmora::test
