#pragma once

#include <memory>

#include "base/geometry.h"

namespace horalo {

class ConversionToast;

// A toast's window, as the logic that drives it sees it: made hidden, kept for ever.
class ToastWindow {
 public:
  virtual ~ToastWindow() = default;

  // What its content takes, with the padding around it.
  virtual Size fittingSize() const = 0;
  virtual void setFrameOrigin(Point origin) = 0;

  // In front of other windows, without the keyboard.
  virtual void orderFront() = 0;
  virtual void orderOut() = 0;

  // Opacity, 0 to 1; `animateAlpha` moves it there over `seconds` and ends what moved it before.
  virtual void setAlpha(double alpha) = 0;
  virtual void animateAlpha(double alpha, double seconds) = 0;
  // Whether the user wants changes at once instead of fades.
  virtual bool reducesMotion() const = 0;
};

class ConversionToastWindow : public ToastWindow {
 public:
  // Shows another toast in place of the one before.
  virtual void setToast(std::shared_ptr<ConversionToast> toast) = 0;
};

}  // namespace horalo
