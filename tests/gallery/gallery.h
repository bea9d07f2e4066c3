#pragma once

#include "gallery/gallery_view.h"

#include <QImage>

namespace velmora::test {

/// All pictures of the gallery, family by family.
[[nodiscard]] std::vector<GalleryView> galleryViews();

struct GalleryLook {
    bool dark = true;
    QString accent = QStringLiteral("lime");
};

/// Draws one picture, on a backdrop of the scheme, with every animation a second on its way. Throws
/// PlainError with what went wrong, be it only a warning of the view.
[[nodiscard]] QImage renderGalleryView(const GalleryView& view, const GalleryLook& look);

} // namespace velmora::test
