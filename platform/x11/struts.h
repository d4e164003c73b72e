#pragma once

#include <QRect>
#include <QSize>
#include <span>

namespace horalo {

// What a desktop's panel keeps free for itself, as _NET_WM_STRUT_PARTIAL tells: a strip along an
// edge of the whole X screen (all monitors together), and the part of the edge that it covers.
struct Strut {
  enum class Edge { left, right, top, bottom };
  Edge edge = Edge::top;
  int thickness = 0;  // pixels from the edge of the X screen
  int from = 0;       // first and last pixel along the edge
  int to = 0;
};

// A monitor's area less the struts that lie on it. A strut counts from the edge of the X screen, so
// a panel at the seam of two monitors reaches across the outer one; one that would cover a whole
// monitor is meant for another, and is left out.
QRect areaWithout(std::span<const Strut> struts, const QRect& monitor, const QSize& xScreen);

}  // namespace horalo
