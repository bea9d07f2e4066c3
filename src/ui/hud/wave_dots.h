#pragma once

#include "ui/hud/level_row.h"

namespace velmora {

/// The voice as a row of dots, as wide as they happen to be.
class WaveDots : public LevelRow {
    Q_OBJECT
    QML_ELEMENT

public:
    using LevelRow::LevelRow;

protected:
    [[nodiscard]] std::vector<qreal> wantedExtents() const override;
    [[nodiscard]] qreal markWidth(qreal extent) const override;
    [[nodiscard]] QSizeF wantedSize(const std::vector<qreal>& extents) const override;
};

} // namespace velmora
