#include "platform/x11/x11_window_backend.h"

#include <QGuiApplication>
#include <QPainterPath>
#include <QScreen>
#include <QTransform>
#include <QWidget>
#include <cmath>
#include <utility>

namespace horalo {
namespace {

constexpr const char* kCompositor = "_NET_WM_CM";

xcb_window_t xWindow(const QWidget& window) {
  return static_cast<xcb_window_t>(window.winId());
}

int scaled(int points, double ratio) {
  return static_cast<int>(std::lround(points * ratio));
}

}  // namespace

X11WindowBackend::X11WindowBackend(SelectionWatch& selections) : selections_(selections) {}

void X11WindowBackend::configure(QWidget& window, WindowRole role) {
  QtWindowBackend::configure(window, role);
  // Most window managers keep a window that takes no keyboard below a full-screen one; what they do
  // not manage is always on top.
  if (!takesKeyboard(window)) window.setWindowFlag(Qt::X11BypassWindowManagerHint);
}

void X11WindowBackend::orderFront(QWidget& window, std::uint32_t eventTime) {
  const bool floats = window.windowFlags().testFlag(Qt::WindowStaysOnTopHint);
  if (floats && takesKeyboard(window) && !window.isVisible()) {
    properties_.putEverywhere(xWindow(window));
  }
  QtWindowBackend::orderFront(window, eventTime);
  if (takesKeyboard(window)) properties_.activate(xWindow(window), eventTime);
}

bool X11WindowBackend::isComposited() const {
  return selections_.hasOwner(kCompositor);
}

bool X11WindowBackend::canBlur() const {
  return isComposited() && properties_.offersBlur();
}

void X11WindowBackend::onCompositingChanged(std::function<void()> changed) {
  compositingObservers_.push_back(std::move(changed));
  if (compositingObservers_.size() > 1) return;
  selections_.observe(kCompositor, [this] {
    for (const auto& observer : compositingObservers_) observer();
  });
}

void X11WindowBackend::setShape(QWidget& window, const QRegion& pixels) {
  properties_.setShape(xWindow(window), pixels);
}

void X11WindowBackend::setBlurBehind(QWidget& window, double radius) {
  const double ratio = window.devicePixelRatioF();
  const QRectF area(0, 0, window.width() * ratio, window.height() * ratio);
  QPainterPath outline;
  outline.addRoundedRect(area, radius * ratio, radius * ratio);
  properties_.setBlurRegion(xWindow(window), QRegion(outline.toFillPolygon().toPolygon()));
}

// With several monitors Qt offers one rectangle cut with each, which loses a panel's height on
// monitors that have none, so the panels are asked instead.
QRect X11WindowBackend::visibleArea(const QScreen& screen) const {
  const QRect points = screen.geometry();
  if (QGuiApplication::screens().size() < 2) return screen.availableGeometry();
  // A monitor's corner is where it is in pixels; only distances within it are scaled.
  const double ratio = screen.devicePixelRatio();
  const QRect pixels(points.x(), points.y(), scaled(points.width(), ratio),
                     scaled(points.height(), ratio));
  const auto struts = properties_.struts();
  const QRect area = areaWithout(struts, pixels, properties_.xScreenSize());
  return {points.x() + scaled(area.x() - points.x(), 1 / ratio),
          points.y() + scaled(area.y() - points.y(), 1 / ratio), scaled(area.width(), 1 / ratio),
          scaled(area.height(), 1 / ratio)};
}

}  // namespace horalo
