#include "ui/hud/recording_hud_model.h"

#include <QQmlEngine>

namespace velmora {

RecordingHUDModel::RecordingHUDModel(const PipelineCoordinator& coord, const AppSettings& settings,
                                     QObject* parent)
    : RecordingHUDModel(coord.recorder(), settings, parent) {
    connect(&coord, &PipelineCoordinator::stateChanged, this, &RecordingHUDModel::setState);
    setState(coord.state());
}

RecordingHUDModel::RecordingHUDModel(LevelSource& voice, const AppSettings& settings, QObject* parent)
    : QObject(parent)
    , m_voice(voice)
    , m_settings(settings) {
    QQmlEngine::setObjectOwnership(&voice, QQmlEngine::CppOwnership);
    for (const auto changed : {&AppSettings::hudSizeChanged, &AppSettings::hudStyleChanged})
        connect(&settings, changed, this, &RecordingHUDModel::updateLook);
    connect(&settings, &AppSettings::hudMinimalChanged, this, [this] {
        updateLook();
        updateContent();
    });
    updateLook();
}

RecordingHUDModel::WaveStyle RecordingHUDModel::style() const {
    const QString style = m_settings.hudStyle();
    if (style == QLatin1String("wave"))
        return WaveStyle::Curve;
    return style == QLatin1String("dots") ? WaveStyle::Dots : WaveStyle::Bars;
}

void RecordingHUDModel::setState(const PipelineState& state) {
    m_state = state;
    updateContent();
}

void RecordingHUDModel::updateLook() {
    m_metrics = hudMetrics(m_settings.hudSize(), m_settings.hudMinimal());
    Q_EMIT lookChanged();
}

void RecordingHUDModel::updateContent() {
    HudContent content = hudContent(m_state, m_settings.hudMinimal());
    if (content == m_content)
        return;
    m_content = std::move(content);
    Q_EMIT contentChanged();
}

} // namespace velmora
