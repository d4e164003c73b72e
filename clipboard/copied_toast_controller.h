#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "base/geometry.h"
#include "base/timers.h"
#include "clipboard/toast_fade.h"
#include "clipboard/toast_window.h"

namespace horalo {

// Confirms for a second, at the bottom of the screen, that the converter copied a value.
class CopiedToastController {
 public:
  static constexpr double kShownFor = 1.0;     // seconds
  static constexpr double kBottomMargin = 60;  // above the visible frame's edge

  // What the controller needs; all must outlive it.
  struct Environment {
    Timers& timers;
    // The part of the main screen that the desktop's panels leave; nothing where there is none.
    std::function<std::optional<Rect>()> visibleFrame;
    std::function<std::unique_ptr<ToastWindow>()> makeWindow;  // at first use
  };

  explicit CopiedToastController(Environment environment);

  void showCopiedToast();
  void dismissCopiedToast();

 private:
  Environment environment_;
  std::unique_ptr<Timer> dismissTimer_;
  std::unique_ptr<ToastWindow> window_;
  std::unique_ptr<ToastFade> fade_;  // of window_
};

}  // namespace horalo
