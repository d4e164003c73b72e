#pragma once

#include <memory>

#include "base/timers.h"
#include "clipboard/toast_window.h"

namespace horalo {

// Fades a toast's window in and out. A fade-out orders the window out at its end even where the
// window was shown again meanwhile: toasts are fleeting, and the next copy brings the next one.
class ToastFade {
 public:
  static constexpr double kFadeIn = 0.15;  // seconds
  static constexpr double kFadeOut = 0.2;

  // Both must outlive the fade.
  ToastFade(ToastWindow& window, Timers& timers) : window_(window), timers_(timers) {}

  void in();
  // Nothing happens where the window is out already.
  void out();

 private:
  void orderOut();

  ToastWindow& window_;
  Timers& timers_;
  bool isOut_ = true;
  std::shared_ptr<char> alive_ = std::make_shared<char>();  // gone with this object
};

}  // namespace horalo
