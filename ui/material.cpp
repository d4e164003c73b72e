#include "ui/material.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "ui/appearance.h"
#include "ui/colors.h"
#include "ui/pixel_grid.h"

namespace horalo {
namespace {

QColor fill(Backdrop backdrop) {
  switch (backdrop) {
    case Backdrop::opaque:
      return color(ColorRole::material);
    case Backdrop::translucent:
      return color(ColorRole::material, 0.97);
    case Backdrop::blurred:
      return color(ColorRole::material, Appearance::shared().isDark() ? 0.90 : 0.88);
  }
  return {};
}

}  // namespace

void drawMaterial(QPainter& painter, const QRectF& rect, const MaterialShape& shape,
                  Backdrop backdrop) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const double width = snappedThickness(painter, shape.outlineWidth);
  if (backdrop == Backdrop::opaque) {
    // The window is cut in whole pixels: the outline goes on to wherever that is.
    painter.fillRect(rect, fill(backdrop));
    painter.fillRect(rect, color(ColorRole::primary, shape.outlineOpacity));
    painter.setBrush(fill(backdrop));
    painter.drawRoundedRect(rect.adjusted(width, width, -width, -width), shape.radius - width,
                            shape.radius - width);
    return;
  }
  painter.setBrush(fill(backdrop));
  painter.drawRoundedRect(rect, shape.radius, shape.radius);
  if (shape.outlineOpacity <= 0) return;
  const double half = width / 2;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(color(ColorRole::primary, shape.outlineOpacity), width));
  painter.drawRoundedRect(rect.adjusted(half, half, -half, -half), shape.radius - half,
                          shape.radius - half);
}

QRegion roundedMask(const QRect& rect, double radius) {
  QRegion region;
  for (int y = 0; y < rect.height(); ++y) {
    const double middle = y + 0.5;
    const double fromEdge = std::min(middle, rect.height() - middle);
    int inset = 0;
    if (fromEdge < radius) {
      const double up = radius - fromEdge;
      inset = static_cast<int>(std::lround(radius - std::sqrt(radius * radius - up * up)));
    }
    region += QRect(rect.left() + inset, rect.top() + y, rect.width() - 2 * inset, 1);
  }
  return region;
}

}  // namespace horalo
