#include "ui/kit/v_icon_view.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace velmora {

namespace {

// The icon's drawing, its lines made thicker where they would be thinner than a pixel and look grey.
QByteArray drawingFor(VIcon icon, int deviceSize) {
    constexpr qreal grid = 24;
    constexpr qreal stroke = 1.8;
    constexpr qreal leastPixels = 1.15;
    QFile file(QStringLiteral(":/qt/qml/Velmora/Kit/icons/%1.svg").arg(vIconName(icon)));
    const bool isThere = file.open(QIODevice::ReadOnly);
    Q_ASSERT(isThere);
    QByteArray drawing = isThere ? file.readAll() : QByteArray();
    const qreal wanted = std::max(stroke, leastPixels * grid / deviceSize);
    return drawing.replace("stroke-width=\"1.8\"", "stroke-width=\"" + QByteArray::number(wanted) + '"');
}

} // namespace

QImage renderIcon(VIcon icon, int deviceSize, const QColor& color) {
    QImage image(deviceSize, deviceSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer drawing(drawingFor(icon, deviceSize));
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
