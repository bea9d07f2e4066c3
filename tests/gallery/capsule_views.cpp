#include "gallery/capsule_views.h"

namespace velmora::test {

std::vector<GalleryView> capsuleViews() {
    return {
        {.name = QStringLiteral("capsule-live-dot"),
         .module = "Hud",
         .type = "LiveDot",
         .size = {},
         .prepare =
             [](GalleryWorld&) {
                 return QVariantMap{{QStringLiteral("size"), 14}};
             }},
    };
}

} // namespace velmora::test
