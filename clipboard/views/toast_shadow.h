#pragma once

#include <QImage>
#include <QRectF>

namespace horalo {

struct ShadowStyle {
  double opacity = 0;  // of black, where the shadow is deepest
  double radius = 0;   // of the blur
  double offset = 0;   // downwards
};

// The soft shadow of a rounded rectangle, for a window of `size` at `scale` physical pixels to the
// device-independent one. What the rectangle itself covers is left out, so that a translucent one
// is not darkened from behind.
QImage roundedShadow(const QSize& size, const QRectF& rect, double cornerRadius,
                     const ShadowStyle& style, double scale);

}  // namespace horalo
