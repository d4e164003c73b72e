#include "clipboard/toast_fade.h"

namespace horalo {

void ToastFade::in() {
  const bool atOnce = window_.reducesMotion();
  window_.setAlpha(atOnce ? 1 : 0);
  window_.orderFront();
  if (!atOnce) window_.animateAlpha(1, kFadeIn);
}

void ToastFade::out() {
  if (window_.reducesMotion()) return window_.orderOut();
  window_.animateAlpha(0, kFadeOut);
  timers_.after(kFadeOut, [this, alive = std::weak_ptr(alive_)] {
    if (!alive.expired()) window_.orderOut();
  });
}

}  // namespace horalo
