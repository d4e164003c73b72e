#pragma once

#include <QPointF>
#include <QRectF>

class QPainter;

namespace horalo {

// Where a scale of 1.25 or 1.5 puts edges between physical pixels, these bring them back onto the
// grid, whatever widget or picture is painted on. All lengths are device-independent.

// The point of the grid that is next to `point`.
QPointF snapped(const QPainter& painter, QPointF point);

// `rect` with every edge moved to the next line of the grid.
QRectF snapped(const QPainter& painter, const QRectF& rect);

// The thickness nearest to `thickness` that is a whole number of physical pixels, at least one.
double snappedThickness(const QPainter& painter, double thickness);

// The thickness of a line that stays within one device-independent pixel: a whole number of
// physical ones, so that all such lines are alike wherever they lie. At a scale of 1.5 it is one.
double hairline(const QPainter& painter);

}  // namespace horalo
