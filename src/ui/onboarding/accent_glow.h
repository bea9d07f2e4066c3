#pragma once

#include <QColor>
#include <QImage>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// Light that comes from the middle of an image's top edge and is nearly gone at its others. The steps
/// between its shades are scattered, or they would show as rings on so large a ground. `size` is in pixels.
[[nodiscard]] QImage accentGlow(QSize size, const QColor& color);

/// The accent's light from the top of a window.
class AccentGlow : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// Its opacity is that of the brightest spot.
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)

public:
    explicit AccentGlow(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QColor m_color = Qt::transparent;
};

} // namespace velmora
