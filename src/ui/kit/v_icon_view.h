#pragma once

#include "ui/kit/v_icon.h"

#include <QColor>
#include <QImage>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// The icon in one colour, drawn for the very pixels it covers. `deviceSize` is in physical pixels.
[[nodiscard]] QImage renderIcon(VIcon icon, int deviceSize, const QColor& color);

/// An icon of the table in a square of `size`.
class VIconView : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int icon READ icon WRITE setIcon NOTIFY iconChanged REQUIRED)
    Q_PROPERTY(qreal size READ size WRITE setSize NOTIFY sizeChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    explicit VIconView(QQuickItem* parent = nullptr);

    [[nodiscard]] int icon() const { return m_icon; }
    void setIcon(int icon);
    [[nodiscard]] qreal size() const { return m_size; }
    void setSize(qreal size);
    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor& color);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void iconChanged();
    void sizeChanged();
    void colorChanged();

private:
    int m_icon = 0;
    qreal m_size = 16;
    QColor m_color = Qt::white;
};

} // namespace velmora
