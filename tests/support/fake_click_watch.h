#pragma once

#include "platform/click_watch.h"

namespace velmora::test {

/// A mouse in the test's hand, over other programs.
class FakeClickWatch final : public ClickWatch {
public:
    void setEnabled(bool on) override { enabled = on; }
    void press(const QPoint& at) {
        if (enabled)
            Q_EMIT pressed(at);
    }

    bool enabled = false;
};

} // namespace velmora::test
