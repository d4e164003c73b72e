#pragma once

#include <array>
#include <optional>

#include "base/geometry.h"

namespace horalo {

// Where the panel stands and how it is dragged. Its home is centred on the main screen, its lower
// edge a little above the middle. Home is sticky: dragged away, the panel stays until it would be
// more than 18 off on one axis, then jumps to the pointer; brought back to less than 18 on both, it
// snaps home, and the pointer has to travel more than 18 from there before it leaves again.
//
// All coordinates are device-independent pixels with the origin at the bottom left.
class PanelPlacement {
 public:
  static constexpr Size kSize{480, 280};

  static Point homeOrigin(const Rect& visibleFrame);

  // Called at every show: takes the home on the screen with that visible frame and returns where
  // the panel goes, a saved position as it stands, on a screen or not.
  Point place(const Rect& visibleFrame, std::optional<Point> saved);

  // The panel's home as of the last show; nothing before the first.
  const std::optional<Rect>& defaultFrame() const { return defaultFrame_; }

  void mouseDown(Point pointer, Point frameOrigin);
  // Where the panel moves to; nothing where it stays, and where no drag is under way.
  std::optional<Point> mouseDragged(Point pointer);
  void mouseUp();

  // Whether a drag has taken the panel away from home, or began away from it.
  bool hasLeftDefaultZone() const { return hasLeftDefaultZone_; }

 private:
  struct Drag {
    Point pointer;       // where the pointer was when the drag began or last snapped home
    Point windowOrigin;  // where the panel was then
  };

  std::optional<Rect> defaultFrame_;
  std::optional<Drag> drag_;
  bool hasLeftDefaultZone_ = false;
};

struct GuideLine {
  Point from;
  Point to;
  friend bool operator==(const GuideLine&, const GuideLine&) = default;
};

// The lines that show the home while the panel is dragged: its left, right and upper edge across
// the whole screen. In the screen's own coordinates, with the origin at the top left and y growing
// downwards.
std::array<GuideLine, 3> guideLines(const Rect& defaultFrame, const Rect& screenFrame);

}  // namespace horalo
