#pragma once

#include "gallery/gallery_view.h"

namespace velmora::test {

[[nodiscard]] std::vector<GalleryView> settingsViews();

} // namespace velmora::test
