#include "ui/menu_bar/menu_bar_popup_panel.h"

#include <QPainterPath>
#include <QRegion>

namespace velmora {

MenuBarPopupPanel::MenuBarPopupPanel(std::unique_ptr<QQuickItem> view, const QRect& popup,
                                     const QRect& window, bool seeThrough)
    : m_view(std::move(view)) {
    setTitle(QStringLiteral("Velmora"));
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::NoDropShadowWindowHint);
    QSurfaceFormat translucent = format();
    translucent.setAlphaBufferSize(8);
    setFormat(translucent);
    setColor(Qt::transparent);
    setGeometry(window);
    m_view->setParentItem(contentItem());
    m_view->setPosition(popup.topLeft() - window.topLeft());
    m_view->setSize(popup.size());
    m_view->setFocus(true);
    if (!seeThrough)
        cutCorners();
    connect(this, &QWindow::activeChanged, this, [this] {
        if (std::exchange(m_wasActive, isActive()) && !isActive())
            Q_EMIT left();
    });
}

void MenuBarPopupPanel::open() {
    show();
    raise();
    requestActivate();
}

void MenuBarPopupPanel::mousePressEvent(QMouseEvent* event) {
    if (m_view->contains(m_view->mapFromScene(event->position())))
        QQuickWindow::mousePressEvent(event);
    else
        Q_EMIT left();
}

void MenuBarPopupPanel::cutCorners() {
    QPainterPath shape;
    const qreal radius = m_view->property("cornerRadius").toReal();
    shape.addRoundedRect(QRectF(m_view->position(), m_view->size()), radius, radius);
    setMask(QRegion(shape.toFillPolygon().toPolygon()));
}

} // namespace velmora
