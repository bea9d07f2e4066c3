#include "core/level_source.h"

#include <algorithm>

namespace velmora {

void LevelSource::publishLevel(float level) {
    m_level = level;
    m_levels.erase(m_levels.begin());
    m_levels.push_back(level);
    Q_EMIT levelsChanged();
}

void LevelSource::clearLevels() {
    m_level = 0;
    std::ranges::fill(m_levels, 0.0F);
    Q_EMIT levelsChanged();
}

} // namespace velmora
