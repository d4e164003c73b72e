#pragma once

#include <QPoint>
#include <QRect>

#include "base/geometry.h"

namespace horalo {

// The two ways to count: Qt from the top left downwards, the program from the bottom left of the
// primary screen upwards, both in device-independent pixels. `primaryBottom` is the y, in Qt's
// count, of the line below the primary screen: 900 for a screen of 1440x900 at 0,0.
//
//   Qt             QRect(480, 120, 480, 280), primaryBottom 900
//   the program    Rect{480, 500, 480, 280}
double flippedY(double y, double height, double primaryBottom);

Rect fromQt(const QRect& rect, int primaryBottom);
Point fromQt(QPoint point, int primaryBottom);

// The upper left corner, in Qt's count, of something of `height` whose lower left corner is at
// `origin`; rounded to whole pixels and kept within what a window system can express.
QPoint toQt(Point origin, int height, int primaryBottom);

}  // namespace horalo
