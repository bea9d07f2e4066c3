#include "ui/menu_bar/menu_bar_icon_look.h"

#include "ui/kit/theme_tokens.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmora {
namespace {

constexpr quint32 alarmRed = 0xFF5252;

// The middle bars reach higher.
double envelope(std::size_t bar) {
    return 0.65 + 0.35 * std::sin((static_cast<double>(bar) + 0.5) / 7 * std::numbers::pi);
}

struct ModeOf {
    using Mode = MenuBarIconMode;
    Mode operator()(const pipeline_state::Idle&) const { return Mode::Idle; }
    Mode operator()(const pipeline_state::Recording&) const { return Mode::Recording; }
    Mode operator()(const pipeline_state::StreamingRecording&) const { return Mode::Recording; }
    Mode operator()(const pipeline_state::Error&) const { return Mode::Error; }
    Mode operator()(const pipeline_state::Transcribing&) const { return Mode::Processing; }
    Mode operator()(const pipeline_state::Cleaning&) const { return Mode::Processing; }
    Mode operator()(const pipeline_state::StreamingCleanup&) const { return Mode::Processing; }
};

} // namespace

MenuBarIconMode menuBarIconMode(const PipelineState& state) {
    return std::visit(ModeOf{}, state);
}

IconGlow iconGlow(MenuBarIconMode mode, const QColor& accent) {
    switch (mode) {
    case MenuBarIconMode::Idle:
        return {Qt::transparent, 0, 0};
    case MenuBarIconMode::Recording:
        return {colorFromHex(alarmRed), 0.5, 3.5};
    case MenuBarIconMode::Processing:
        return {accent, 0.4, 3.0};
    case MenuBarIconMode::Error:
        return {colorFromHex(alarmRed), 0.6, 4.0};
    }
    Q_UNREACHABLE();
}

BrandBars voiceBars(std::span<const float> levels) {
    BrandBars bars{};
    const std::span<const float> last = levels.last(std::min(levels.size(), bars.size()));
    const std::size_t missing = bars.size() - last.size();
    for (std::size_t i = 0; i < bars.size(); ++i) {
        const double level = i < missing ? 0 : static_cast<double>(last[i - missing]);
        bars[i] = envelope(i) * (std::min(level * 1.6, 1.0) * 38 + 4);
    }
    return bars;
}

BrandBars waveBars(double seconds) {
    BrandBars bars{};
    for (std::size_t i = 0; i < bars.size(); ++i)
        bars[i] = envelope(i) * ((std::sin(seconds * 2.2 - 0.7 * static_cast<double>(i)) + 1) * 0.5 * 22 + 8);
    return bars;
}

} // namespace velmora
