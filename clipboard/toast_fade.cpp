#include "clipboard/toast_fade.h"

namespace horalo {

void ToastFade::in() {
  isOut_ = false;
  const bool atOnce = window_.reducesMotion();
  window_.setAlpha(atOnce ? 1 : 0);
  window_.orderFront();
  if (!atOnce) window_.animateAlpha(1, kFadeIn);
}

void ToastFade::out() {
  if (isOut_) return;
  if (window_.reducesMotion()) return orderOut();
  window_.animateAlpha(0, kFadeOut);
  timers_.after(kFadeOut, [this, alive = std::weak_ptr(alive_)] {
    if (!alive.expired()) orderOut();
  });
}

void ToastFade::orderOut() {
  isOut_ = true;
  window_.orderOut();
}

}  // namespace horalo
