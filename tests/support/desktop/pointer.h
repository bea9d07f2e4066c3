#pragma once

#include "platform/linux/x11_connection.h"

#include <QPoint>

namespace velmora::test {

/// The desktop's mouse.
class Pointer {
public:
    void moveTo(QPoint point);
    /// A click where the pointer is; 1 is the left button, 3 the right one.
    void click(uint8_t button = 1);
    void click(QPoint point, uint8_t button = 1) {
        moveTo(point);
        click(button);
    }

private:
    void fake(uint8_t kind, uint8_t detail, QPoint point = {});

    X11Connection m_x;
};

} // namespace velmora::test
