#include "platform/qt/screen_coordinates.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace horalo {
namespace {

// X11 counts pixels in 16 bits.
int wholePixels(double value) {
  using Limits = std::numeric_limits<std::int16_t>;
  return static_cast<int>(std::lround(std::clamp<double>(value, Limits::min(), Limits::max())));
}

}  // namespace

double flippedY(double y, double height, double primaryBottom) {
  return primaryBottom - y - height;
}

Rect fromQt(const QRect& rect, int primaryBottom) {
  return {static_cast<double>(rect.x()), flippedY(rect.y(), rect.height(), primaryBottom),
          static_cast<double>(rect.width()), static_cast<double>(rect.height())};
}

Point fromQt(QPoint point, int primaryBottom) {
  return {static_cast<double>(point.x()), flippedY(point.y(), 0, primaryBottom)};
}

QPoint toQt(Point origin, int height, int primaryBottom) {
  return {wholePixels(origin.x), wholePixels(flippedY(origin.y, height, primaryBottom))};
}

}  // namespace horalo
