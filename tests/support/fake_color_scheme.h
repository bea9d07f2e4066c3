#pragma once

#include "platform/color_scheme.h"

namespace velmora::test {

/// A desktop whose scheme the test changes.
class FakeColorScheme final : public ColorScheme {
public:
    explicit FakeColorScheme(bool dark = true)
        : m_dark(dark) {}

    [[nodiscard]] bool isDark() const override { return m_dark; }
    void setDark(bool dark) {
        m_dark = dark;
        Q_EMIT changed();
    }

private:
    bool m_dark;
};

} // namespace velmora::test
