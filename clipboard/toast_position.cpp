#include "clipboard/toast_position.h"

namespace horalo {
namespace {

constexpr double kMargin = 12;
constexpr double kBottomMargin = 40;

enum class Side { start, middle, end };

struct Position {
  std::string_view rawValue, displayName;
  Side side;
  bool atTop;
};

const Position& detailsOf(ToastPosition position) {
  static constexpr Position kPositions[] = {
      {"topLeft", "Top Left", Side::start, true},
      {"topCenter", "Top Center", Side::middle, true},
      {"topRight", "Top Right", Side::end, true},
      {"bottomLeft", "Bottom Left", Side::start, false},
      {"bottomCenter", "Bottom Center", Side::middle, false},
      {"bottomRight", "Bottom Right", Side::end, false},
  };
  static_assert(std::size(kPositions) == kToastPositions.size());
  return kPositions[static_cast<std::size_t>(position)];
}

}  // namespace

std::string_view rawValue(ToastPosition position) {
  return detailsOf(position).rawValue;
}

ToastPosition toastPosition(std::string_view raw) {
  for (const ToastPosition position : kToastPositions) {
    if (rawValue(position) == raw) return position;
  }
  return ToastPosition::bottomCenter;
}

std::string_view displayName(ToastPosition position) {
  return detailsOf(position).displayName;
}

Point origin(ToastPosition position, Size toast, const Rect& visibleFrame) {
  const Position& details = detailsOf(position);
  Point origin;
  switch (details.side) {
    case Side::start:
      origin.x = visibleFrame.minX() + kMargin;
      break;
    case Side::middle:
      origin.x = visibleFrame.midX() - toast.width / 2;
      break;
    case Side::end:
      origin.x = visibleFrame.maxX() - toast.width - kMargin;
      break;
  }
  origin.y = details.atTop ? visibleFrame.maxY() - toast.height - kMargin
                           : visibleFrame.minY() + kBottomMargin;
  return origin;
}

}  // namespace horalo
