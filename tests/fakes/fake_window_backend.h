#pragma once

#include <QRegion>
#include <QWidget>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "app/window_backend.h"

namespace horalo {

// A desktop of one screen, 1440 x 900 with a panel of 25 at the bottom, that remembers what was
// asked of it. Windows are shown where the widget library shows them.
class FakeWindowBackend final : public WindowBackend {
 public:
  std::optional<ScreenFrames> screen = ScreenFrames{{0, 0, 1440, 900}, {0, 25, 1440, 875}};
  bool composited = true;
  bool blurs = false;
  Point pointer{720, 450};
  std::map<const QWidget*, WindowRole> roles;
  std::map<const QWidget*, Point> origins;
  std::map<const QWidget*, QRegion> shapes;
  std::map<const QWidget*, int> timesInFront;

  // The compositor comes or goes.
  void setComposited(bool on) {
    composited = on;
    for (const auto& changed : compositingObservers_) changed();
  }

  void configure(QWidget& window, WindowRole role) override {
    roles[&window] = role;
    // The screen in memory gives every window the keyboard that is shown, but for tool tips.
    const bool aside = role == WindowRole::toast || role == WindowRole::guides;
    if (aside) window.setWindowFlags(Qt::ToolTip);
  }
  void setFrameOrigin(QWidget& window, Point origin) override { origins[&window] = origin; }
  Rect frame(const QWidget& window) const override {
    const auto origin = origins.find(&window);
    const Point corner = origin == origins.end() ? Point{} : origin->second;
    return {corner.x, corner.y, static_cast<double>(window.width()),
            static_cast<double>(window.height())};
  }
  void orderFront(QWidget& window, std::uint32_t) override {
    ++timesInFront[&window];
    window.show();
  }
  std::optional<ScreenFrames> mainScreen() const override { return screen; }
  std::optional<ScreenFrames> screenOf(const QWidget&) const override { return screen; }
  Point pointerLocation(const QMouseEvent& event) const override {
    Q_UNUSED(event);
    return pointer;
  }
  bool isComposited() const override { return composited; }
  bool canBlur() const override { return blurs; }
  void onCompositingChanged(std::function<void()> changed) override {
    compositingObservers_.push_back(std::move(changed));
  }
  void setShape(QWidget& window, const QRegion& pixels) override { shapes[&window] = pixels; }
  void setBlurBehind(QWidget&, double) override {}

 private:
  std::vector<std::function<void()>> compositingObservers_;
};

}  // namespace horalo
