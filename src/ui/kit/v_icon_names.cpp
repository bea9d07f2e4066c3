#include "ui/kit/v_icon_names.h"

#include "ui/kit/v_icon.h"

namespace velmora {

VIconNames::VIconNames(QObject* parent)
    : QQmlPropertyMap(this, parent) {
    for (int i = 0; i < vIconCount; ++i)
        insert(vIconName(static_cast<VIcon>(i)), i);
    freeze();
}

} // namespace velmora
