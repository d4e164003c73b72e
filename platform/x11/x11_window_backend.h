#pragma once

#include <functional>
#include <vector>

#include "platform/qt/qt_window_backend.h"
#include "platform/x11/desktop_properties.h"
#include "platform/x11/grabbed_keyboard.h"
#include "platform/x11/regained_focus.h"
#include "platform/x11/selection_watch.h"

namespace horalo {

// Windows on an X11 desktop, as window managers of all kinds want to be asked.
class X11WindowBackend final : public QtWindowBackend {
 public:
  // `selections` must outlive this object.
  explicit X11WindowBackend(SelectionWatch& selections);

  void configure(QWidget& window, WindowRole role) override;
  void orderFront(QWidget& window, std::uint32_t eventTime) override;
  bool isComposited() const override;
  bool canBlur() const override;
  void onCompositingChanged(std::function<void()> changed) override;
  void setShape(QWidget& window, const QRegion& pixels) override;
  void setBlurBehind(QWidget& window, double radius) override;

 protected:
  QRect visibleArea(const QScreen& screen) const override;

 private:
  SelectionWatch& selections_;
  mutable DesktopProperties properties_;
  GrabbedKeyboard grabbedKeyboard_;
  RegainedFocus regainedFocus_;
  std::vector<std::function<void()>> compositingObservers_;
};

}  // namespace horalo
