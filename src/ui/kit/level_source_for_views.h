#pragma once

#include "core/level_source.h"

#include <QtQml/qqml.h>

namespace velmora {

struct LevelSourceForViews {
    Q_GADGET
    QML_FOREIGN(velmora::LevelSource)
    QML_NAMED_ELEMENT(LevelSource)
    QML_UNCREATABLE("it hears, and is no view's business")
};

} // namespace velmora
