#pragma once

#include "platform/compositing.h"

namespace velmora::test {

class FakeCompositing final : public Compositing {
public:
    [[nodiscard]] bool isActive() const override { return m_active; }
    void setActive(bool active) {
        m_active = active;
        Q_EMIT changed();
    }

private:
    bool m_active = true;
};

} // namespace velmora::test
