#include "app/panel_placement.h"

#include <algorithm>
#include <cmath>

namespace horalo {
namespace {

constexpr double kDeadZone = 18;
constexpr double kAboveMiddle = 50;
constexpr double kAtHome = 1;  // so far off counts as at home when a drag begins

struct Distance {
  double x;
  double y;
};

Distance distance(Point a, Point b) {
  return {std::abs(a.x - b.x), std::abs(a.y - b.y)};
}

}  // namespace

Point PanelPlacement::homeOrigin(const Rect& visibleFrame) {
  return {visibleFrame.midX() - kSize.width / 2, visibleFrame.midY() + kAboveMiddle};
}

Point PanelPlacement::place(const Rect& visibleFrame, std::optional<Point> saved) {
  const Point home = homeOrigin(visibleFrame);
  defaultFrame_ = Rect{home.x, home.y, kSize.width, kSize.height};
  return saved.value_or(home);
}

void PanelPlacement::mouseDown(Point pointer, Point frameOrigin) {
  drag_ = Drag{pointer, frameOrigin};
  if (!defaultFrame_) return;
  const Distance off = distance(frameOrigin, {defaultFrame_->x, defaultFrame_->y});
  hasLeftDefaultZone_ = std::max(off.x, off.y) > kAtHome;
}

std::optional<Point> PanelPlacement::mouseDragged(Point pointer) {
  if (!drag_ || !defaultFrame_) return std::nullopt;
  const Point home{defaultFrame_->x, defaultFrame_->y};
  const Point candidate{drag_->windowOrigin.x + pointer.x - drag_->pointer.x,
                        drag_->windowOrigin.y + pointer.y - drag_->pointer.y};
  const Distance off = distance(candidate, home);
  if (!hasLeftDefaultZone_) {
    if (off.x <= kDeadZone && off.y <= kDeadZone) return std::nullopt;
    hasLeftDefaultZone_ = true;
    return candidate;
  }
  if (off.x < kDeadZone && off.y < kDeadZone) {
    hasLeftDefaultZone_ = false;
    drag_ = Drag{pointer, home};
    return home;
  }
  return candidate;
}

void PanelPlacement::mouseUp() {
  drag_.reset();
  hasLeftDefaultZone_ = false;
}

std::array<GuideLine, 3> guideLines(const Rect& defaultFrame, const Rect& screenFrame) {
  const double left = defaultFrame.minX() - screenFrame.x;
  const double right = defaultFrame.maxX() - screenFrame.x;
  const double top = screenFrame.height - (defaultFrame.maxY() - screenFrame.y);
  return {GuideLine{{left, 0}, {left, screenFrame.height}},
          GuideLine{{right, 0}, {right, screenFrame.height}},
          GuideLine{{0, top}, {screenFrame.width, top}}};
}

}  // namespace horalo
