#pragma once

namespace horalo {

// Points, sizes and rectangles of the desktop in device-independent pixels, with the origin at the
// bottom left of the primary screen and y growing upwards.
struct Point {
  double x = 0;
  double y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
  double width = 0;
  double height = 0;
  friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  Point origin() const { return {x, y}; }
  double minX() const { return x; }
  double midX() const { return x + width / 2; }
  double maxX() const { return x + width; }
  double minY() const { return y; }
  double midY() const { return y + height / 2; }
  double maxY() const { return y + height; }
  friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace horalo
