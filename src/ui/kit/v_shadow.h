#pragma once

#include <QColor>
#include <QPointer>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// The soft shadow of a rounded rectangle. It lays itself around `target`, a sibling that follows it in the
/// view.
class VShadow : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem* target READ target WRITE setTarget NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    /// How far the shadow spreads; twice the blur's sigma.
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY changed)
    /// The target's corners.
    Q_PROPERTY(qreal cornerRadius MEMBER m_cornerRadius NOTIFY changed)
    Q_PROPERTY(qreal offsetY MEMBER m_offsetY NOTIFY changed)
    /// Keeps the target's own area free, so that the shadow doesn't shine through a target that is
    /// see-through.
    Q_PROPERTY(bool hollow MEMBER m_hollow NOTIFY changed)

public:
    explicit VShadow(QQuickItem* parent = nullptr);

    [[nodiscard]] QQuickItem* target() const { return m_target; }
    void setTarget(QQuickItem* target);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    void layAroundTarget();

    QPointer<QQuickItem> m_target;
    QColor m_color = Qt::black;
    qreal m_radius = 16;
    qreal m_cornerRadius = 0;
    qreal m_offsetY = 0;
    bool m_hollow = true;
};

} // namespace velmora
