#pragma once

#include "ui/kit/brand_bars.h"

#include <QColor>
#include <QList>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// The brand tile. Its colours follow the accent.
class VLogo : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal size READ size WRITE setSize NOTIFY changed)
    /// Of the corners; the mark's own unless it is set.
    Q_PROPERTY(qreal radius READ radius WRITE setRadius RESET resetRadius NOTIFY changed)
    /// Heights on a grid in which the tile is 72 units high; the mark at rest unless they are set.
    Q_PROPERTY(QList<qreal> bars MEMBER m_bars NOTIFY changed)

public:
    explicit VLogo(QQuickItem* parent = nullptr);

    [[nodiscard]] qreal size() const { return m_size; }
    void setSize(qreal size);
    [[nodiscard]] qreal radius() const;
    void setRadius(qreal radius);
    void resetRadius();

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    qreal m_size = 36;
    std::optional<qreal> m_radius;
    QList<qreal> m_bars{restingBrandBars.begin(), restingBrandBars.end()};
};

} // namespace velmora
