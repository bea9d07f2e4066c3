#pragma once

#include "ui/hud/level_row.h"

namespace velmora {

/// The voice as a row of dots, as wide as they happen to be. A row that would be wider than `maximumWidth` is
/// drawn smaller.
class WaveDots : public LevelRow {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal maximumWidth MEMBER m_maximumWidth NOTIFY changed REQUIRED)

public:
    using LevelRow::LevelRow;

protected:
    [[nodiscard]] std::vector<qreal> wantedExtents() const override;
    [[nodiscard]] qreal markWidth(qreal extent) const override;
    [[nodiscard]] QSizeF wantedSize(const std::vector<qreal>& extents) const override;

private:
    qreal m_maximumWidth = 0;
};

} // namespace velmora
