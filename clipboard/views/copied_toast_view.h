#pragma once

#include "clipboard/views/toast_view.h"

namespace horalo {

// A capsule that says "Copied".
class CopiedToastView final : public ToastView {
  Q_OBJECT
 public:
  CopiedToastView();
};

}  // namespace horalo
