#pragma once

#include "ui/kit/brand_bars.h"

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// The mark's bars as a voice moves them. `phase` is 0 to 1, at both of which they are the same.
[[nodiscard]] BrandBars brandWaveBars(double phase);

/// The mark's bars without its tile, as tall as the item has room for.
class BrandWave : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(qreal phase MEMBER m_phase NOTIFY changed)

public:
    explicit BrandWave(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QColor m_color = Qt::white;
    qreal m_phase = 0;
};

} // namespace velmora
