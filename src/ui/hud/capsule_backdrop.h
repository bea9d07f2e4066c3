#pragma once

#include <QColor>
#include <QImage>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// The accent's light behind the capsule and the shadow under it. Both are larger than the panel and fade
/// out towards its edges, where the window would cut them off.
class CapsuleBackdrop : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// The capsule's place in this item; its ends are round.
    Q_PROPERTY(QRectF capsule MEMBER m_capsule NOTIFY capsuleChanged REQUIRED)
    Q_PROPERTY(QColor accent MEMBER m_accent NOTIFY lightChanged)
    Q_PROPERTY(bool strong MEMBER m_strong NOTIFY lightChanged)
    Q_PROPERTY(bool minimal MEMBER m_minimal NOTIFY lightChanged)

public:
    explicit CapsuleBackdrop(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void capsuleChanged();
    void lightChanged();

private:
    void paintGlow(QPainter& painter);
    void paintShadow(QPainter& painter) const;
    void fadeEdges(QPainter& painter) const;

    QRectF m_capsule;
    QColor m_accent = Qt::white;
    bool m_strong = false;
    bool m_minimal = false;
    QImage m_glow;
};

} // namespace velmora
