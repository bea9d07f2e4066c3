#include "ui/kit/v_icon_view.h"

#include <QPainter>
#include <QSvgRenderer>

namespace velmora {

QImage renderIcon(VIcon icon, int deviceSize, const QColor& color) {
    QImage image(deviceSize, deviceSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer drawing(QStringLiteral(":/qt/qml/Velmora/Kit/icons/%1.svg").arg(vIconName(icon)));
    QPainter painter(&image);
    drawing.render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

VIconView::VIconView(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    setImplicitSize(m_size, m_size);
}

void VIconView::setIcon(int icon) {
    if (icon < 0 || icon >= vIconCount || icon == m_icon)
        return;
    m_icon = icon;
    update();
    Q_EMIT iconChanged();
}

void VIconView::setSize(qreal size) {
    if (size == m_size)
        return;
    m_size = size;
    setImplicitSize(size, size);
    update();
    Q_EMIT sizeChanged();
}

void VIconView::setColor(const QColor& color) {
    if (color == m_color)
        return;
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void VIconView::paint(QPainter* painter) {
    const qreal scale = painter->device()->devicePixelRatio() * painter->transform().m11();
    QImage image = renderIcon(static_cast<VIcon>(m_icon), qRound(m_size * scale), m_color);
    painter->drawImage(boundingRect(), image);
}

} // namespace velmora
