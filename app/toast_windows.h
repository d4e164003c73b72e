#pragma once

#include <memory>

#include "clipboard/toast_window.h"

namespace horalo {

class WindowBackend;

// The toasts' views as windows of the desktop. They live as long as `backend` tells of anything.
std::unique_ptr<ConversionToastWindow> makeConversionToastWindow(WindowBackend& backend);
std::unique_ptr<ToastWindow> makeCopiedToastWindow(WindowBackend& backend);

}  // namespace horalo
