#pragma once

#include "core/pipeline_coordinator.h"
#include "ui/hud/hud_content.h"
#include "ui/hud/hud_metrics.h"

#include <QtQml/qqmlregistration.h>

namespace velmora {

/// What the capsule shows: the state of the dictation in the form that the settings ask for.
class RecordingHUDModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("it comes with the panel")
    Q_PROPERTY(velmora::HudMetrics metrics READ metrics NOTIFY lookChanged)
    Q_PROPERTY(WaveStyle style READ style NOTIFY lookChanged)
    Q_PROPERTY(bool minimal READ isMinimal NOTIFY lookChanged)
    Q_PROPERTY(velmora::HudContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(velmora::LevelSource* voice READ voice CONSTANT)

public:
    enum class WaveStyle { Bars, Curve, Dots };
    Q_ENUM(WaveStyle)

    RecordingHUDModel(const PipelineCoordinator& coord, const AppSettings& settings,
                      QObject* parent = nullptr);
    /// One that setState() leads through the dictation.
    RecordingHUDModel(LevelSource& voice, const AppSettings& settings, QObject* parent = nullptr);

    void setState(const PipelineState& state);

    [[nodiscard]] const HudMetrics& metrics() const { return m_metrics; }
    [[nodiscard]] WaveStyle style() const;
    [[nodiscard]] bool isMinimal() const { return m_settings.hudMinimal(); }
    [[nodiscard]] const HudContent& content() const { return m_content; }
    [[nodiscard]] LevelSource* voice() const { return &m_voice; }

Q_SIGNALS:
    void lookChanged();
    void contentChanged();

private:
    void updateLook();
    void updateContent();

    LevelSource& m_voice;
    const AppSettings& m_settings;
    PipelineState m_state;
    HudMetrics m_metrics;
    HudContent m_content;
};

} // namespace velmora
