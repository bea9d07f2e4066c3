#include "ui/hud/level_view.h"

namespace velmora {

LevelView::LevelView(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &LevelView::changed, this, [this] { adjust(); });
}

void LevelView::setRecorder(AudioRecorder* recorder) {
    if (recorder == m_recorder)
        return;
    if (m_recorder)
        disconnect(m_recorder, nullptr, this, nullptr);
    m_recorder = recorder;
    if (recorder)
        connect(recorder, &AudioRecorder::levelsChanged, this, [this] { followLevels(); });
    Q_EMIT changed();
}

std::span<const float> LevelView::levels() const {
    return m_recorder ? std::span<const float>(m_recorder->levels()) : std::span<const float>();
}

} // namespace velmora
