#include "ui/hud/level_view.h"

namespace velmora {

LevelView::LevelView(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &LevelView::changed, this, [this] { adjust(); });
}

void LevelView::setSource(LevelSource* source) {
    if (source == m_source)
        return;
    if (m_source)
        disconnect(m_source, nullptr, this, nullptr);
    m_source = source;
    if (source)
        connect(source, &LevelSource::levelsChanged, this, [this] { followLevels(); });
    Q_EMIT changed();
}

std::span<const float> LevelView::levels() const {
    return m_source ? std::span<const float>(m_source->levels()) : std::span<const float>();
}

} // namespace velmora
