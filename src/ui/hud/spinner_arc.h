#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// A ring with a quarter of it lit, turned clockwise by `angle` degrees. The line lies half outside the
/// item's `diameter`, so the item is larger than that by a line.
class SpinnerArc : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal diameter MEMBER m_diameter NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor accent MEMBER m_accent NOTIFY changed)
    Q_PROPERTY(qreal angle MEMBER m_angle NOTIFY changed)

public:
    explicit SpinnerArc(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    qreal m_diameter = 0;
    QColor m_accent = Qt::white;
    qreal m_angle = 0;
};

} // namespace velmora
