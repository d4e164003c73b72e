#include "clipboard/conversion_toast_controller.h"

#include <utility>

#include "clipboard/toast_position.h"

namespace horalo {

ConversionToastController::ConversionToastController(Environment environment)
    : environment_(std::move(environment)), dismissTimer_(environment_.timers.make()) {}

void ConversionToastController::makeWindow() {
  if (window_) return;
  window_ = environment_.makeWindow();
  fade_ = std::make_unique<ToastFade>(*window_, environment_.timers);
}

// Most of a first toast's time goes into the locale's patterns and the fonts.
void ConversionToastController::prepare() {
  if (window_) return;
  makeWindow();
  window_->setToast(makeToast({}, {environment_.rows.clock.now(), source::Now{}, TimeZone::utc()}));
}

void ConversionToastController::prepareSoon() {
  environment_.timers.after(kSoon, [this, alive = std::weak_ptr(alive_)] {
    if (!alive.expired()) prepare();
  });
}

void ConversionToastController::showConversionToast(const std::string& input,
                                                    const ConversionResult& result) {
  if (environment_.isConverterVisible()) return;
  dismissTimer_->stop();
  makeWindow();
  window_->setToast(makeToast(input, result));
  if (const auto frame = environment_.visibleFrame()) {
    const auto position = toastPosition(environment_.preferences.toastPosition());
    window_->setFrameOrigin(origin(position, window_->fittingSize(), *frame));
  }
  fade_->in();
  scheduleConversionToastDismiss();
}

// A click's dismissal may come when all this is gone.
std::shared_ptr<ConversionToast> ConversionToastController::makeToast(
    const std::string& input, const ConversionResult& result) {
  ConversionToast::Texts texts{input, {}, {}};
  appendRowValue(texts.date, RowKind::formatted, result, environment_.rows);
  appendRowValue(texts.relative, RowKind::relative, result, environment_.rows);
  const auto alive = std::weak_ptr(alive_);
  ConversionToast::Callbacks callbacks;
  callbacks.onCopy = [this, date = texts.date] { copy(date); };
  callbacks.onDismiss = [this, alive] {
    if (!alive.expired()) dismissConversionToast();
  };
  callbacks.onHoverChanged = [this](bool inside) {
    if (inside) {
      dismissTimer_->stop();
    } else {
      scheduleConversionToastDismiss();
    }
  };
  return std::make_shared<ConversionToast>(std::move(texts), std::move(callbacks),
                                           environment_.timers);
}

void ConversionToastController::copy(const std::string& date) {
  environment_.notifications.post(notification::appDidCopyToClipboard);
  environment_.pasteboard.write(date);
}

void ConversionToastController::scheduleConversionToastDismiss() {
  dismissTimer_->startOnce(kShownFor, [this] { dismissConversionToast(); });
}

void ConversionToastController::dismissConversionToast() {
  dismissTimer_->stop();
  if (fade_) fade_->out();
}

}  // namespace horalo
