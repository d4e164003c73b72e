#include "app/toast_windows.h"

#include <utility>

#include "app/window_backend.h"
#include "clipboard/views/conversion_toast_view.h"
#include "clipboard/views/copied_toast_view.h"
#include "ui/appearance.h"

namespace horalo {
namespace {

// Interface: ToastWindow or what is derived from it.
template <typename View, typename Interface>
class ViewWindow : public Interface {
 public:
  ViewWindow(WindowBackend& backend, WindowRole role) : backend_(backend) {
    view_.setAttribute(Qt::WA_QuitOnClose, false);
    backend_.configure(view_, role);
    const auto update = [this] {
      if (view_.isVisible()) updateBackdrop();
    };
    backend_.onCompositingChanged(update);
    QObject::connect(&view_, &ToastView::fitted, &view_, update);
  }

  Size fittingSize() const override {
    return {static_cast<double>(view_.width()), static_cast<double>(view_.height())};
  }
  void setFrameOrigin(Point origin) override { backend_.setFrameOrigin(view_, origin); }

  void orderFront() override {
    updateBackdrop();
    backend_.orderFront(view_, 0);
  }
  void orderOut() override { view_.hide(); }

  void setAlpha(double alpha) override { view_.setAlpha(alpha); }
  void animateAlpha(double alpha, double seconds) override { view_.animateAlpha(alpha, seconds); }
  bool reducesMotion() const override { return Appearance::shared().reducedMotion(); }

 protected:
  View view_;

 private:
  void updateBackdrop() {
    const bool composited = backend_.isComposited();
    view_.setBackdrop(composited ? Backdrop::translucent : Backdrop::opaque);
    backend_.setShape(view_, composited ? QRegion() : view_.shape());
  }

  WindowBackend& backend_;
};

class ConversionWindow final : public ViewWindow<ConversionToastView, ConversionToastWindow> {
 public:
  explicit ConversionWindow(WindowBackend& backend) : ViewWindow(backend, WindowRole::toast) {}

  void setToast(std::shared_ptr<ConversionToast> toast) override {
    view_.setToast(std::move(toast));
  }
};

// The pointer goes through it, as through the guides.
class CopiedWindow final : public ViewWindow<CopiedToastView, ToastWindow> {
 public:
  explicit CopiedWindow(WindowBackend& backend) : ViewWindow(backend, WindowRole::guides) {}
};

}  // namespace

std::unique_ptr<ConversionToastWindow> makeConversionToastWindow(WindowBackend& backend) {
  return std::make_unique<ConversionWindow>(backend);
}

std::unique_ptr<ToastWindow> makeCopiedToastWindow(WindowBackend& backend) {
  return std::make_unique<CopiedWindow>(backend);
}

}  // namespace horalo
