#pragma once

#include "platform/compositing.h"
#include "platform/screens.h"

namespace velmora::test {

/// One screen, with a panel at its top unless the test puts it elsewhere.
class FakeScreens final : public Screens {
public:
    [[nodiscard]] std::optional<ScreenArea> mainScreen() override { return screen; }
    [[nodiscard]] std::optional<ScreenArea> screenAt(const QPoint&) override { return screen; }

    std::optional<ScreenArea> screen = ScreenArea{QRect(0, 0, 1280, 800), QRect(0, 24, 1280, 776), 0};
};

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
