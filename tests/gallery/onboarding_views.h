#pragma once

#include "gallery/gallery_view.h"

namespace velmora::test {

[[nodiscard]] std::vector<GalleryView> onboardingViews();

} // namespace velmora::test
