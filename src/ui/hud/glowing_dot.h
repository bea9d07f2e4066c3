#pragma once

#include <QColor>
#include <QImage>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// A disc in the item's middle and the light around it, both `pulse` times their size. The light is blurred
/// once, not with every step of the pulse.
class GlowingDot : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal diameter MEMBER m_diameter NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(qreal pulse MEMBER m_pulse NOTIFY pulseChanged)

public:
    explicit GlowingDot(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();
    void pulseChanged();

private:
    void fit();

    qreal m_diameter = 0;
    QColor m_color = Qt::red;
    qreal m_pulse = 1;
    QImage m_light;
    qreal m_lightScale = 0;
};

} // namespace velmora
