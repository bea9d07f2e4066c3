#include "ui/hud/hud_content.h"

namespace velmora {
namespace {

bool isBlank(const QString& text) {
    return std::ranges::all_of(text, [](QChar letter) { return letter == u' ' || letter == u'\t'; });
}

struct FullBody {
    HudContent operator()(const pipeline_state::Idle&) const { return {}; }
    HudContent operator()(const pipeline_state::Recording& state) const {
        HudContent content = recording(state.elapsed);
        content.strongGlow = true;
        return content;
    }
    HudContent operator()(const pipeline_state::StreamingRecording& state) const {
        HudContent content = recording(state.elapsed);
        if (!isBlank(state.latestPartial)) {
            content.timer.clear();
            content.partial = state.latestPartial;
        }
        return content;
    }
    HudContent operator()(const pipeline_state::Transcribing&) const {
        return busy(QStringLiteral("Транскрибируем…"));
    }
    HudContent operator()(const pipeline_state::Cleaning&) const {
        return busy(QStringLiteral("Подготавливаем…"));
    }
    HudContent operator()(const pipeline_state::StreamingCleanup&) const {
        return busy(QStringLiteral("Очищаем…"));
    }
    HudContent operator()(const pipeline_state::Error& state) const {
        return {.cross = true, .status = state.message, .spoken = state.message};
    }

    static HudContent recording(double elapsed) {
        return {.dot = true,
                .wave = true,
                .divider = true,
                .timer = formatTimer(elapsed),
                .spoken = QStringLiteral("Идёт запись")};
    }
    static HudContent busy(const QString& label) {
        return {.spinner = true, .status = label, .spoken = label};
    }
};

} // namespace

HudContent hudContent(const PipelineState& state, bool hudMinimal) {
    HudContent content = std::visit(FullBody(), state);
    if (hudMinimal) {
        content.dot = false;
        content.divider = false;
        content.timer.clear();
        content.partial.clear();
        content.status.clear();
    }
    return content;
}

QString formatTimer(double seconds) {
    const auto whole = static_cast<qint64>(seconds);
    return QString::asprintf("%02lld:%02lld", whole / 60, whole % 60);
}

} // namespace velmora
