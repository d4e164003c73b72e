#include "clipboard/copied_toast_controller.h"

#include <utility>

namespace horalo {

CopiedToastController::CopiedToastController(Environment environment)
    : environment_(std::move(environment)), dismissTimer_(environment_.timers.make()) {}

void CopiedToastController::showCopiedToast() {
  dismissTimer_->stop();
  if (!window_) {
    window_ = environment_.makeWindow();
    fade_ = std::make_unique<ToastFade>(*window_, environment_.timers);
  }
  if (const auto frame = environment_.visibleFrame()) {
    window_->setFrameOrigin(
        {frame->midX() - window_->fittingSize().width / 2, frame->minY() + kBottomMargin});
  }
  fade_->in();
  dismissTimer_->startOnce(kShownFor, [this] { dismissCopiedToast(); });
}

void CopiedToastController::dismissCopiedToast() {
  dismissTimer_->stop();
  if (fade_) fade_->out();
}

}  // namespace horalo
