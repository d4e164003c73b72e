#include "ui/focus_ring.h"

#include <QPainter>

#include "ui/colors.h"

namespace horalo {

void drawFocusRing(QPainter& painter, const QRectF& rect, double radius) {
  constexpr double kWidth = 2;
  constexpr double kOut = kFocusRingMargin - kWidth / 2;  // from the shape to the ring's middle
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(color(ColorRole::accent, 0.75), kWidth));
  painter.drawRoundedRect(rect.adjusted(-kOut, -kOut, kOut, kOut), radius + kOut, radius + kOut);
}

}  // namespace horalo
