#pragma once

#include <memory>

#include "clipboard/conversion_toast.h"
#include "clipboard/views/toast_symbol.h"
#include "clipboard/views/toast_view.h"
#include "ui/text_label.h"

namespace horalo {

// What a copied timestamp means: the date, and below it what was copied and how long ago that is. A
// click anywhere in the window copies the date.
class ConversionToastView final : public ToastView {
  Q_OBJECT
 public:
  ConversionToastView();

  // Shows another toast in place of the one before.
  void setToast(std::shared_ptr<ConversionToast> toast);

 protected:
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void setHovered(bool inside);

  std::shared_ptr<ConversionToast> toast_;  // none before the first
  TextLabel* const date_;
  TextLabel* const input_;
  TextLabel* const dot_;
  TextLabel* const relative_;
  ToastSymbol* const mark_;
};

}  // namespace horalo
