#include "gallery/menu_bar_views.h"

namespace velmora::test {

std::vector<GalleryView> menuBarViews() {
    return {
        {.name = QStringLiteral("menu-row"),
         .module = "MenuBar",
         .type = "MenuItemRow",
         .size = {},
         .prepare =
             [](GalleryWorld&) {
                 return QVariantMap{{QStringLiteral("label"), QStringLiteral("История")}};
             }},
    };
}

} // namespace velmora::test
