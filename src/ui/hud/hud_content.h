#pragma once

#include "core/pipeline_state.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// What the capsule holds, from left to right; a text that is empty isn't there.
struct HudContent {
    Q_GADGET
    QML_VALUE_TYPE(hudContent)
    Q_PROPERTY(bool dot MEMBER dot CONSTANT)
    Q_PROPERTY(bool wave MEMBER wave CONSTANT)
    Q_PROPERTY(bool divider MEMBER divider CONSTANT)
    Q_PROPERTY(QString timer MEMBER timer CONSTANT)
    Q_PROPERTY(QString partial MEMBER partial CONSTANT)
    Q_PROPERTY(bool spinner MEMBER spinner CONSTANT)
    Q_PROPERTY(bool cross MEMBER cross CONSTANT)
    Q_PROPERTY(QString status MEMBER status CONSTANT)
    Q_PROPERTY(QString spoken MEMBER spoken CONSTANT)
    Q_PROPERTY(bool strongGlow MEMBER strongGlow CONSTANT)

public:
    bool dot = false;
    bool wave = false;
    bool divider = false;
    QString timer{};
    QString partial{}; ///< the newest words, as they came
    bool spinner = false;
    bool cross = false;
    QString status{};        ///< what is being done, or what went wrong
    QString spoken{};        ///< what a screen reader says, whatever is shown
    bool strongGlow = false; ///< the light of a plain recording

    bool operator==(const HudContent&) const = default;
};

[[nodiscard]] HudContent hudContent(const PipelineState& state, bool hudMinimal);

/// Minutes and seconds; minutes go on beyond an hour. `seconds` must be finite.
[[nodiscard]] QString formatTimer(double seconds);

} // namespace velmora
