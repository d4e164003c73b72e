#include "ui/pixel_grid.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace horalo {

QPointF snapped(const QPainter& painter, QPointF point) {
  const QTransform& toPixels = painter.deviceTransform();
  const QPointF pixel = toPixels.map(point);
  return toPixels.inverted().map(QPointF(std::round(pixel.x()), std::round(pixel.y())));
}

QRectF snapped(const QPainter& painter, const QRectF& rect) {
  return {snapped(painter, rect.topLeft()), snapped(painter, rect.bottomRight())};
}

double snappedThickness(const QPainter& painter, double thickness) {
  const double scale = painter.deviceTransform().m22();
  return std::max(1.0, std::round(thickness * scale)) / scale;
}

double hairline(const QPainter& painter) {
  const double scale = painter.deviceTransform().m22();
  return std::max(1.0, std::floor(scale)) / scale;
}

}  // namespace horalo
