#include "gallery/kit_views.h"

#include <QTest>

namespace velmora::test {
namespace {

GalleryView sheet(const char* name, const char* type) {
    return {.name = QLatin1String(name), .module = "Gallery", .type = type, .size = {}};
}

} // namespace

std::vector<GalleryView> kitViews() {
    return {
        sheet("kit-buttons", "ButtonSheet"), sheet("kit-choices", "ChoiceSheet"),
        sheet("kit-fields", "FieldSheet"),   sheet("kit-cards", "CardSheet"),
        sheet("kit-brand", "BrandSheet"),    sheet("kit-icons", "IconSheet"),
        sheet("kit-colors", "ColorSheet"),
    };
}

} // namespace velmora::test
