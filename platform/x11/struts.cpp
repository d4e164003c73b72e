#include "platform/x11/struts.h"

#include <algorithm>

namespace horalo {
namespace {

// Horizontal strips lie along the top or the bottom.
bool isHorizontal(const Strut& strut) {
  return strut.edge == Strut::Edge::top || strut.edge == Strut::Edge::bottom;
}

QRect areaOf(const Strut& strut, const QSize& xScreen) {
  const int length = strut.to - strut.from + 1;
  switch (strut.edge) {
    case Strut::Edge::left:
      return {0, strut.from, strut.thickness, length};
    case Strut::Edge::right:
      return {xScreen.width() - strut.thickness, strut.from, strut.thickness, length};
    case Strut::Edge::top:
      return {strut.from, 0, length, strut.thickness};
    case Strut::Edge::bottom:
      break;
  }
  return {strut.from, xScreen.height() - strut.thickness, length, strut.thickness};
}

}  // namespace

QRect areaWithout(std::span<const Strut> struts, const QRect& monitor, const QSize& xScreen) {
  QRect area = monitor;
  for (const Strut& strut : struts) {
    const QRect taken = areaOf(strut, xScreen).intersected(monitor);
    if (taken.isEmpty()) continue;
    if (isHorizontal(strut) ? taken.height() == monitor.height()
                            : taken.width() == monitor.width()) {
      continue;
    }
    switch (strut.edge) {
      case Strut::Edge::left:
        area.setLeft(std::max(area.left(), taken.right() + 1));
        break;
      case Strut::Edge::right:
        area.setRight(std::min(area.right(), taken.left() - 1));
        break;
      case Strut::Edge::top:
        area.setTop(std::max(area.top(), taken.bottom() + 1));
        break;
      case Strut::Edge::bottom:
        area.setBottom(std::min(area.bottom(), taken.top() - 1));
        break;
    }
  }
  return area.isEmpty() ? monitor : area;
}

}  // namespace horalo
