#pragma once

#include "platform/screens.h"

namespace velmora::test {

/// One screen, or none.
class FakeScreens final : public Screens {
public:
    [[nodiscard]] std::optional<ScreenArea> mainScreen() override { return screen; }
    [[nodiscard]] std::optional<ScreenArea> screenAt(const QPoint&) override { return screen; }

    std::optional<ScreenArea> screen = ScreenArea{QRect(0, 0, 1280, 800), QRect(0, 24, 1280, 776)};
};

} // namespace velmora::test
