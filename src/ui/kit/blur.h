#pragma once

#include <QColor>
#include <QImage>

namespace velmora {

/// A Gaussian blur of an Alpha8 image, by three box passes. What would leave the image is lost: leave a
/// margin of three sigma. `sigma` is in pixels of the image.
[[nodiscard]] QImage blurredAlpha(const QImage& alpha, qreal sigma);

/// An Alpha8 image in one colour, premultiplied.
[[nodiscard]] QImage tinted(const QImage& alpha, const QColor& color);

} // namespace velmora
