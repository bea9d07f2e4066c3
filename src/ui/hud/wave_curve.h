#pragma once

#include "ui/hud/level_view.h"

namespace velmora {

/// The voice as one band, drawn anew with each level.
class WaveCurve : public LevelView {
    Q_OBJECT
    QML_ELEMENT

public:
    using LevelView::LevelView;

    void paint(QPainter* painter) override;

protected:
    void followLevels() override;
    void adjust() override;

private:
    std::vector<float> m_drawn; // a band that didn't change isn't drawn again
};

} // namespace velmora
