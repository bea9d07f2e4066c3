#pragma once

#include <QObject>

#include <vector>

namespace velmora {

/// Something that hears a voice and tells how loud it is, while it listens. Main thread.
class LevelSource : public QObject {
    Q_OBJECT
    Q_PROPERTY(float level READ level NOTIFY levelsChanged)

public:
    static constexpr std::size_t levelCount = 32;

    using QObject::QObject;

    /// The last level, 0.0 to 1.0.
    [[nodiscard]] float level() const { return m_level; }
    /// The last 32 levels, oldest first.
    [[nodiscard]] const std::vector<float>& levels() const { return m_levels; }

Q_SIGNALS:
    void levelsChanged();

protected:
    void publishLevel(float level);
    /// Silence, as before the first level.
    void clearLevels();

private:
    float m_level = 0;
    std::vector<float> m_levels = std::vector<float>(levelCount, 0.0F);
};

} // namespace velmora
