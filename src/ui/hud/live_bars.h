#pragma once

#include "ui/hud/level_row.h"

namespace velmora {

/// The voice as upright bars. The item is taller than the wave by what a loud voice overshoots it.
class LiveBars : public LevelRow {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal barWidth MEMBER m_barWidth NOTIFY changed)

public:
    using LevelRow::LevelRow;

protected:
    [[nodiscard]] std::vector<qreal> wantedExtents() const override;
    [[nodiscard]] qreal markWidth(qreal extent) const override;
    [[nodiscard]] QSizeF wantedSize(const std::vector<qreal>& extents) const override;

private:
    qreal m_barWidth = 3;
};

} // namespace velmora
