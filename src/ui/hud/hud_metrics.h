#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// The capsule's measures, in device-independent pixels.
struct HudMetrics {
    Q_GADGET
    QML_VALUE_TYPE(hudMetrics)
    Q_PROPERTY(qreal panelWidth MEMBER panelWidth CONSTANT)
    Q_PROPERTY(qreal panelHeight MEMBER panelHeight CONSTANT)
    Q_PROPERTY(qreal capsuleHeight MEMBER capsuleHeight CONSTANT)
    Q_PROPERTY(qreal capsulePadding MEMBER capsulePadding CONSTANT)
    Q_PROPERTY(qreal itemSpacing MEMBER itemSpacing CONSTANT)
    Q_PROPERTY(qreal dotDiameter MEMBER dotDiameter CONSTANT)
    Q_PROPERTY(qreal waveWidth MEMBER waveWidth CONSTANT)
    Q_PROPERTY(qreal waveHeight MEMBER waveHeight CONSTANT)
    Q_PROPERTY(qreal dividerWidth MEMBER dividerWidth CONSTANT)
    Q_PROPERTY(qreal dividerHeight MEMBER dividerHeight CONSTANT)
    Q_PROPERTY(qreal textSize MEMBER textSize CONSTANT)
    Q_PROPERTY(qreal timerMinimumWidth MEMBER timerMinimumWidth CONSTANT)
    Q_PROPERTY(qreal partialMaximumWidth MEMBER partialMaximumWidth CONSTANT)
    Q_PROPERTY(qreal contentMaximumWidth MEMBER contentMaximumWidth CONSTANT)
    Q_PROPERTY(qreal dotsMaximumWidth MEMBER dotsMaximumWidth CONSTANT)
    Q_PROPERTY(qreal spinnerDiameter MEMBER spinnerDiameter CONSTANT)
    Q_PROPERTY(qreal crossSize MEMBER crossSize CONSTANT)

public:
    qreal panelWidth = 480;
    qreal panelHeight = 0;
    qreal capsuleHeight = 0;
    qreal capsulePadding = 0; ///< on the left and on the right
    qreal itemSpacing = 0;
    qreal dotDiameter = 0;
    qreal waveWidth = 0;
    qreal waveHeight = 0;
    qreal dividerWidth = 0.5;
    qreal dividerHeight = 0;
    qreal textSize = 0;
    qreal timerMinimumWidth = 0;
    qreal partialMaximumWidth = 220;
    qreal contentMaximumWidth = 0; ///< what the panel has room for inside the capsule
    qreal dotsMaximumWidth = 0;    ///< what it leaves to a row of dots
    qreal spinnerDiameter = 0;
    qreal crossSize = 0;

    bool operator==(const HudMetrics&) const = default;
};

/// The measures for the setting `hudSize`; anything but "small" and "large" is the size between them.
[[nodiscard]] HudMetrics hudMetrics(const QString& hudSize, bool hudMinimal);

} // namespace velmora
