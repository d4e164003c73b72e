#include "app/views/caret.h"

#include <utility>

namespace horalo {

Caret::Caret(Timers& timers, std::function<void()> changed)
    : changed_(std::move(changed)), timer_(timers.make()) {}

void Caret::show(double period) {
  isShown_ = true;
  if (!(period > 0)) return timer_->stop();
  halfPeriod_ = period / 2;
  blinksStill_ = kBlinksFor;
  timer_->startRepeating(halfPeriod_, [this] { blink(); });
}

void Caret::hide() {
  isShown_ = false;
  timer_->stop();
}

void Caret::blink() {
  isShown_ = !isShown_;
  blinksStill_ -= halfPeriod_;
  if (isShown_ && blinksStill_ <= 0) timer_->stop();
  changed_();
}

}  // namespace horalo
