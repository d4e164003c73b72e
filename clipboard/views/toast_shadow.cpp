#include "clipboard/views/toast_shadow.h"

#include <algorithm>
#include <cmath>

namespace horalo {
namespace {

// How far `point` is outside the outline of a rounded rectangle; negative inside.
double distanceTo(const QRectF& rect, double radius, const QPointF& point) {
  const QPointF fromCentre = point - rect.center();
  const double x = std::abs(fromCentre.x()) - rect.width() / 2 + radius;
  const double y = std::abs(fromCentre.y()) - rect.height() / 2 + radius;
  return std::hypot(std::max(x, 0.0), std::max(y, 0.0)) + std::min(std::max(x, y), 0.0) - radius;
}

}  // namespace

// Across a straight edge, a blurred shape falls off as the integral of the bell curve; taking the
// distance to the outline for every pixel carries that around the corners without blurring
// anything.
QImage roundedShadow(const QSize& size, const QRectF& rect, double cornerRadius,
                     const ShadowStyle& style, double scale) {
  const QSize pixels(static_cast<int>(std::lround(size.width() * scale)),
                     static_cast<int>(std::lround(size.height() * scale)));
  QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(scale);
  const double spread = style.radius / 2 * std::sqrt(2.0);
  const QPointF offset(0, style.offset);
  for (int row = 0; row < pixels.height(); ++row) {
    auto* const line = reinterpret_cast<QRgb*>(image.scanLine(row));
    for (int column = 0; column < pixels.width(); ++column) {
      const QPointF point((column + 0.5) / scale, (row + 0.5) / scale);
      const double outside = distanceTo(rect, cornerRadius, point) * scale + 0.5;
      if (outside <= 0) {
        line[column] = 0;
        continue;
      }
      const double depth =
          std::erfc(distanceTo(rect, cornerRadius, point - offset) / spread) / 2 * style.opacity;
      line[column] = qRgba(0, 0, 0, static_cast<int>(depth * std::min(outside, 1.0) * 255 + 0.5));
    }
  }
  return image;
}

}  // namespace horalo
