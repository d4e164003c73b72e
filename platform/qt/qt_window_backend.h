#pragma once

#include <QRect>

#include "app/window_backend.h"

class QScreen;

namespace horalo {

// Windows by what Qt offers on every desktop. Desktops that need more derive from it.
class QtWindowBackend : public WindowBackend {
 public:
  void configure(QWidget& window, WindowRole role) override;
  void setFrameOrigin(QWidget& window, Point origin) override;
  Rect frame(const QWidget& window) const override;
  void orderFront(QWidget& window, std::uint32_t eventTime) override;
  void setShape(QWidget& window, const QRegion& pixels) override;
  std::optional<ScreenFrames> mainScreen() const override;
  std::optional<ScreenFrames> screenOf(const QWidget& window) const override;
  Point pointerLocation(const QMouseEvent& event) const override;

  // Nothing is known of a compositor: windows that are opaque look right in either case.
  bool isComposited() const override { return false; }
  bool canBlur() const override { return false; }
  void onCompositingChanged(std::function<void()>) override {}
  void setBlurBehind(QWidget&, double) override {}

 protected:
  // Whether a window wants the keyboard: a panel or an ordinary window.
  static bool takesKeyboard(const QWidget& window);
  // The screen less the desktop's panels, in Qt's count.
  virtual QRect visibleArea(const QScreen& screen) const;

 private:
  ScreenFrames framesOf(const QScreen& screen) const;
};

}  // namespace horalo
