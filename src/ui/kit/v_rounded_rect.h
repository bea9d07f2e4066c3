#pragma once

#include <QColor>
#include <QPainterPath>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// A rounded rectangle with a fill, or a gradient from the top leading to the bottom trailing corner, and a
/// border inside its edge. Exact at fractions of a pixel, unlike Rectangle.
class VRoundedRect : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// Corners never bend more than half the shorter side: a large radius makes a capsule or a circle.
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    /// The gradient's end; without it the fill is `color` alone.
    Q_PROPERTY(QColor gradientEnd MEMBER m_gradientEnd RESET clearGradient NOTIFY changed)
    Q_PROPERTY(QColor borderColor MEMBER m_borderColor NOTIFY changed)
    Q_PROPERTY(qreal borderWidth MEMBER m_borderWidth NOTIFY changed)

public:
    explicit VRoundedRect(QQuickItem* parent = nullptr);

    void clearGradient();
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    qreal m_radius = 0;
    QColor m_color = Qt::transparent;
    QColor m_gradientEnd;
    QColor m_borderColor = Qt::transparent;
    qreal m_borderWidth = 0;
};

} // namespace velmora
