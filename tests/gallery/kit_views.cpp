#include "gallery/kit_views.h"

#include "gallery/gallery_hands.h"

namespace velmora::test {
namespace {

GalleryView sheet(const char* name, const char* type) {
    return {.name = QLatin1String(name), .module = "Gallery", .type = type, .size = {}};
}

GalleryView buttons() {
    GalleryView view = sheet("kit-buttons", "ButtonSheet");
    view.arrange = [](QQuickItem& root) {
        part(root, "focused").forceActiveFocus(Qt::TabFocusReason);
        hover(part(root, "hovered"));
    };
    return view;
}

GalleryView fields() {
    GalleryView view = sheet("kit-fields", "FieldSheet");
    view.arrange = [](QQuickItem& root) {
        QQuickItem& field = part(root, "field");
        field.forceActiveFocus(Qt::MouseFocusReason);
        QMetaObject::invokeMethod(&field, "selectAll");
    };
    return view;
}

} // namespace

std::vector<GalleryView> kitViews() {
    return {
        buttons(),
        sheet("kit-choices", "ChoiceSheet"),
        fields(),
        sheet("kit-cards", "CardSheet"),
        sheet("kit-brand", "BrandSheet"),
        sheet("kit-icons", "IconSheet"),
        sheet("kit-colors", "ColorSheet"),
    };
}

} // namespace velmora::test
