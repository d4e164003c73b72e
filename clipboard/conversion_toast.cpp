#include "clipboard/conversion_toast.h"

namespace horalo {

void ConversionToast::tap() {
  if (copied_) return;
  callbacks_.onCopy();
  copied_ = true;
  timers_.after(kDismissAfterCopy, callbacks_.onDismiss);
}

void ConversionToast::setHovered(bool inside) {
  isHovered_ = inside;
  if (callbacks_.onHoverChanged) callbacks_.onHoverChanged(inside);
}

}  // namespace horalo
