#include "gallery/recording_settings_views.h"

#include "gallery/gallery_hands.h"
#include "gallery/gallery_world.h"
#include "support/settings_stage.h"
#include "ui/settings/recording_settings_model.h"

#include <cmath>

namespace velmora::test {
namespace {

/// What the tab needs beyond the world's objects.
class RecordingStage final : public QObject {
public:
    explicit RecordingStage(GalleryWorld& world)
        : QObject(world.stage())
        , m_loop(world.loop)
        , settings(world.loop, world.defaults, world.settings, world.auth, world.workspace, m_info) {
        settings.inputs.setInputs(
            {{QStringLiteral("builtin"), QStringLiteral("Встроенное аудио Аналоговый стерео")},
             {QStringLiteral("usb"), QStringLiteral("USB-микрофон")}});
    }

    /// A second into a sentence.
    void talk() {
        for (int i = 0; i < 32; ++i) {
            const double level =
                std::clamp(0.5 + 0.3 * std::sin(i * 0.83) + 0.2 * std::sin(i * 2.1), 0.0, 1.0);
            settings.levelEngine.speak(
                std::vector<float>(960, static_cast<float>(std::pow(10.0, (level - 1) * 3))));
            m_loop.runPosted();
        }
    }

private:
    InfoDictionary m_info{{}};
    HandLoop& m_loop;

public:
    SettingsStage settings;
    RecordingSettingsModel model{settings.neighbours};
};

using Setting = std::function<void(GalleryWorld&, RecordingStage&)>;
using Act = std::function<void(QQuickItem&, RecordingStage&)>;

GalleryView tab(const QString& name, const Setting& set = {}, const Act& act = {}) {
    auto stage = std::make_shared<RecordingStage*>();
    return {.name = QStringLiteral("settings-recording-") + name,
            .module = "Settings",
            .type = "SettingsRecordingView",
            .size = {},
            .prepare =
                [stage, set](GalleryWorld& world) {
                    *stage = new RecordingStage(world);
                    if (set)
                        set(world, **stage);
                    return QVariantMap{{QStringLiteral("model"), QVariant::fromValue(&(*stage)->model)}};
                },
            .arrange =
                [stage, act](QQuickItem& root) {
                    (*stage)->talk();
                    if (act)
                        act(root, **stage);
                }};
}

GalleryView capsule(const char* style, const char* size, bool minimal, const char* position) {
    const QString name = QStringLiteral("capsule-%1-%2-%3%4")
                             .arg(QLatin1String(style), QLatin1String(size), QLatin1String(position),
                                  minimal ? QLatin1String("-minimal") : QLatin1String());
    return tab(name, [=](GalleryWorld& world, RecordingStage&) {
        world.settings.setHudStyle(QLatin1String(style));
        world.settings.setHudSize(QLatin1String(size));
        world.settings.setHudMinimal(minimal);
        world.settings.setHudPosition(QLatin1String(position));
    });
}

} // namespace

std::vector<GalleryView> recordingSettingsViews() {
    return {
        tab(QStringLiteral("idle")),
        tab(QStringLiteral("capturing"), {},
            [](QQuickItem&, RecordingStage& stage) { stage.model.hotkey()->toggleCapture(); }),
        tab(QStringLiteral("needs-modifier"), {},
            [](QQuickItem&, RecordingStage& stage) {
                stage.model.hotkey()->toggleCapture();
                stage.settings.keys.keyDown(35);
            }),
        tab(QStringLiteral("refused"), {},
            [](QQuickItem&, RecordingStage& stage) {
                stage.settings.keys.allowed = false;
                stage.model.hotkey()->toggleCapture();
            }),
        tab(QStringLiteral("custom"),
            [](GalleryWorld& world, RecordingStage&) {
                world.settings.setHotkeyCustomLabel(QStringLiteral("Right ⌥ + Left ⌘"));
                world.settings.setHotkey(QStringLiteral("custom"));
                world.settings.setShowHUD(false);
            }),
        tab(QStringLiteral("missing-microphone"),
            [](GalleryWorld& world, RecordingStage&) {
                world.settings.setMicUniqueID(
                    QStringLiteral("alsa_input.usb-Example_Podcast_Microphone_0042-00.analog-stereo"));
            }),
        tab(QStringLiteral("problem"),
            [](GalleryWorld&, RecordingStage& stage) {
                stage.settings.levelEngine.authorizationStatus = MicrophoneAuthorization::Denied;
            }),
        tab(QStringLiteral("microphones"), {},
            [](QQuickItem& root, RecordingStage&) { click(part(root, "microphones")); }),
        capsule("bars", "small", false, "bottom"),
        capsule("bars", "large", true, "top"),
        capsule("wave", "medium", false, "top"),
        capsule("wave", "large", false, "bottom"),
        capsule("dots", "large", false, "top"),
        capsule("dots", "medium", true, "bottom"),
    };
}

} // namespace velmora::test
