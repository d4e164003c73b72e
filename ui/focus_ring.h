#pragma once

#include <QRectF>

class QPainter;

namespace horalo {

// Room that a control leaves around its shape for the ring.
inline constexpr int kFocusRingMargin = 3;

// A ring in the accent colour around `rect`, the shape that has the keyboard; `radius` is that of
// the shape's corners.
void drawFocusRing(QPainter& painter, const QRectF& rect, double radius);

}  // namespace horalo
