#pragma once

#include <array>

namespace velmora {

/// Heights of the seven bars of the mark, on a grid in which the mark is 72 units high.
using BrandBars = std::array<double, 7>;

/// The mark when nothing moves.
inline constexpr BrandBars restingBrandBars{4, 14, 28, 40, 24, 12, 4};

} // namespace velmora
