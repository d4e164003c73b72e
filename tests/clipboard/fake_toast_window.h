#pragma once

#include <memory>
#include <string>
#include <vector>

#include "clipboard/conversion_toast.h"
#include "clipboard/toast_window.h"

namespace horalo {

// What was done to a toast's window; outlives the window, which its controller owns.
struct ToastWindowLog {
  bool isVisible = false;
  double alpha = -1;
  bool reducesMotion = false;
  Size size{300, 80};
  Point origin{-1, -1};
  std::shared_ptr<ConversionToast> toast;
  std::vector<std::string> calls;
};

class FakeToastWindow final : public ConversionToastWindow {
 public:
  explicit FakeToastWindow(ToastWindowLog& log) : log_(log) {}

  Size fittingSize() const override { return log_.size; }
  void setFrameOrigin(Point origin) override {
    log_.origin = origin;
    log_.calls.emplace_back("place");
  }
  void orderFront() override {
    log_.isVisible = true;
    log_.calls.emplace_back("front");
  }
  void orderOut() override {
    log_.isVisible = false;
    log_.calls.emplace_back("out");
  }
  void setAlpha(double alpha) override {
    log_.alpha = alpha;
    log_.calls.push_back(alpha == 0 ? "clear" : "opaque");
  }
  void animateAlpha(double alpha, double seconds) override {
    log_.alpha = alpha;
    log_.calls.push_back((alpha == 0 ? "to clear in " : "to opaque in ") +
                         std::to_string(static_cast<int>(seconds * 1000 + 0.5)));
  }
  bool reducesMotion() const override { return log_.reducesMotion; }
  void setToast(std::shared_ptr<ConversionToast> toast) override {
    log_.toast = std::move(toast);
    log_.calls.emplace_back("content");
  }

 private:
  ToastWindowLog& log_;
};

}  // namespace horalo
