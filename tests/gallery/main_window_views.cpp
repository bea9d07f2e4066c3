#include "gallery/main_window_views.h"

#include "gallery/gallery_world.h"
#include "ui/main_window/app_navigator.h"

namespace velmora::test {

std::vector<GalleryView> mainWindowViews() {
    return {
        {.name = QStringLiteral("window-history"),
         .module = "MainWindow",
         .type = "MainWindowView",
         .size = {920, 620},
         .prepare =
             [](GalleryWorld& world) {
                 auto* nav = new AppNavigator(world.stage());
                 return QVariantMap{{QStringLiteral("nav"), QVariant::fromValue(nav)}};
             }},
    };
}

} // namespace velmora::test
