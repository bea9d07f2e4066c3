#pragma once

#include "ui/hud/level_view.h"

#include <QVariantAnimation>

namespace velmora {

/// A row of rounded marks, each as large as its level is loud. They glide to a new level in a tenth of a
/// second.
class LevelRow : public LevelView {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(qreal spacing MEMBER m_spacing NOTIFY changed)
    /// The tallest mark's height, but for those that overshoot it.
    Q_PROPERTY(qreal waveHeight MEMBER m_waveHeight NOTIFY changed REQUIRED)

public:
    explicit LevelRow(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

    /// What the marks are gliding to.
    [[nodiscard]] const std::vector<qreal>& targets() const { return m_targets; }
    /// How tall the marks are now.
    [[nodiscard]] std::vector<qreal> extents() const;
    [[nodiscard]] bool isGliding() const { return m_glide.state() == QAbstractAnimation::Running; }

protected:
    [[nodiscard]] qreal spacing() const { return m_spacing; }
    [[nodiscard]] qreal waveHeight() const { return m_waveHeight; }
    [[nodiscard]] virtual std::vector<qreal> wantedExtents() const = 0;
    [[nodiscard]] virtual qreal markWidth(qreal extent) const = 0;
    /// The row's own size for marks of these extents.
    [[nodiscard]] virtual QSizeF wantedSize(const std::vector<qreal>& extents) const = 0;
    [[nodiscard]] qreal rowWidth(const std::vector<qreal>& extents) const;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void followLevels() override;
    void adjust() override;

private:
    void refresh();

    qreal m_spacing = 0;
    qreal m_waveHeight = 0;
    std::vector<qreal> m_origins; // where the marks are gliding from
    std::vector<qreal> m_targets;
    QVariantAnimation m_glide;
};

} // namespace velmora
