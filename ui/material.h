#pragma once

#include <QRectF>
#include <QRegion>

class QPainter;

namespace horalo {

// What lies behind the pixels of a panel or toast.
enum class Backdrop {
  opaque,       // no compositor: nothing shows through
  translucent,  // a compositor, but sharp: hardly anything shows through
  blurred       // a compositor that blurs what is behind
};

// The outline is painted inside the rectangle, in the primary colour.
struct MaterialShape {
  double radius = 0;
  double outlineOpacity = 0;
  double outlineWidth = 1;
};

// Fills a rounded rectangle with the material and outlines it. With an opaque backdrop the corners
// are filled as well: there the window itself is cut to shape.
void drawMaterial(QPainter& painter, const QRectF& rect, const MaterialShape& shape,
                  Backdrop backdrop);

// The pixels that a rounded rectangle covers at least by half: the shape of a window where nothing
// can be translucent.
QRegion roundedMask(const QRect& rect, double radius);

}  // namespace horalo
