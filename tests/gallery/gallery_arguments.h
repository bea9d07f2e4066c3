#pragma once

#include "gallery/gallery.h"

#include <variant>

namespace velmora::test {

struct ListViews {};

struct RenderViews {
    QString folder;
    std::vector<GalleryView> views;
    GalleryLook look;
    QString scale;
};

/// What is wrong with the arguments.
struct BadArguments {
    QString message;
};

/// `arguments` begin with the program's name.
[[nodiscard]] std::variant<ListViews, RenderViews, BadArguments>
parseGalleryArguments(const QStringList& arguments, const std::vector<GalleryView>& views);

} // namespace velmora::test
