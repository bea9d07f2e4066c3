#include "gallery/capsule_views.h"

#include "gallery/gallery_world.h"
#include "ui/hud/recording_hud_model.h"

#include <cmath>

namespace velmora::test {
namespace {

namespace state = pipeline_state;

struct CapsuleState {
    const char* name;
    PipelineState state;
    bool hasWave = false;
};

const QString longMessage =
    QStringLiteral("Не удалось начать запись: устройство занято другой программой и не отвечает уже давно");

std::vector<CapsuleState> capsuleStates() {
    return {
        {"recording", state::Recording{61.4}, true},
        {"streaming", state::StreamingRecording{3725, {}, {}}, true},
        {"partial",
         state::StreamingRecording{9, QStringLiteral("и тогда мы решили, что поедем в субботу"), {}}, true},
        {"transcribing", state::Transcribing{}},
        {"cleaning", state::Cleaning{}},
        {"streaming-cleanup", state::StreamingCleanup{}},
        {"error", state::Error{QStringLiteral("Слишком коротко — удерживайте клавишу дольше")}},
        {"error-long", state::Error{longMessage}},
    };
}

// Half a second of talk: syllables of different strength.
void talk(GalleryWorld& world) {
    world.recorder.start();
    for (int i = 0; i < 32; ++i) {
        const double level = std::clamp(0.48 + 0.3 * std::sin(i * 0.83) + 0.22 * std::sin(i * 2.1), 0.0, 1.0);
        world.engine.speak(std::vector<float>(960, static_cast<float>(std::pow(10.0, (level - 1) * 3))));
        world.loop.runPosted();
    }
}

GalleryView capsule(const QString& name, const PipelineState& shown, const char* size, bool minimal,
                    const char* style, bool silent = false) {
    return {.name = QStringLiteral("capsule-") + name,
            .module = "Hud",
            .type = "RecordingHUD",
            .size = {},
            .prepare = [shown, size, minimal, style, silent](GalleryWorld& world) {
                world.settings.setHudSize(QLatin1String(size));
                world.settings.setHudMinimal(minimal);
                world.settings.setHudStyle(QLatin1String(style));
                if (!silent)
                    talk(world);
                auto* model = new RecordingHUDModel(world.recorder, world.settings, world.stage());
                model->setState(shown);
                return QVariantMap{{QStringLiteral("model"), QVariant::fromValue(model)}};
            }};
}

} // namespace

std::vector<GalleryView> capsuleViews() {
    std::vector<GalleryView> views{
        {.name = QStringLiteral("capsule-live-dot"),
         .module = "Hud",
         .type = "LiveDot",
         .size = {},
         .prepare =
             [](GalleryWorld&) {
                 return QVariantMap{{QStringLiteral("size"), 14}};
             }},
    };
    for (const char* size : {"small", "medium", "large"}) {
        for (const bool minimal : {false, true}) {
            const QString form =
                QLatin1String(size) + (minimal ? QLatin1String("-minimal-") : QLatin1String("-full-"));
            for (const CapsuleState& each : capsuleStates()) {
                const QString name = form + QLatin1String(each.name);
                if (!each.hasWave) {
                    views.push_back(capsule(name, each.state, size, minimal, "bars"));
                    continue;
                }
                for (const char* style : {"bars", "wave", "dots"})
                    views.push_back(capsule(name + QLatin1Char('-') + QLatin1String(style), each.state, size,
                                            minimal, style));
            }
        }
    }
    for (const char* style : {"bars", "wave", "dots"})
        views.push_back(capsule(QStringLiteral("medium-full-silence-") + QLatin1String(style),
                                state::Recording{0}, "medium", false, style, true));
    return views;
}

} // namespace velmora::test
