#pragma once

#include <memory>

#include "clipboard/toast_window.h"

namespace horalo {

class WindowBackend;

// The toasts' views as windows of the desktop. `backend` must outlive them.
std::unique_ptr<ConversionToastWindow> makeConversionToastWindow(WindowBackend& backend);
std::unique_ptr<ToastWindow> makeCopiedToastWindow(WindowBackend& backend);

}  // namespace horalo
