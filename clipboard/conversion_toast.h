#pragma once

#include <functional>
#include <string>

#include "base/timers.h"

namespace horalo {

// One conversion toast: what it says and what a click and the pointer do to it.
class ConversionToast {
 public:
  static constexpr double kDismissAfterCopy = 0.6;  // seconds

  struct Texts {
    std::string input;     // as it was copied
    std::string date;      // what a click copies
    std::string relative;  // from the moment it was made
  };
  struct Callbacks {
    std::function<void()> onCopy;
    std::function<void()> onDismiss;
    std::function<void(bool inside)> onHoverChanged;  // may be empty
  };

  // `timers` must outlive the toast; `onDismiss` may be called after it is gone.
  ConversionToast(Texts texts, Callbacks callbacks, Timers& timers)
      : texts_(std::move(texts)), callbacks_(std::move(callbacks)), timers_(timers) {}

  const Texts& texts() const { return texts_; }
  bool copied() const { return copied_; }
  bool isHovered() const { return isHovered_; }

  // Copies, the first time; the toast goes a little later.
  void tap();
  void setHovered(bool inside);

 private:
  Texts texts_;
  Callbacks callbacks_;
  Timers& timers_;
  bool copied_ = false;
  bool isHovered_ = false;
};

}  // namespace horalo
