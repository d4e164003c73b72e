#pragma once

#include <QColor>
#include <QVariantAnimation>
#include <QWidget>

#include "ui/colors.h"
#include "ui/symbols.h"

namespace horalo {

// A symbol in a slot of a toast; another symbol takes its place by fading over.
class ToastSymbol : public QWidget {
  Q_OBJECT
 public:
  struct Look {
    Symbol symbol;
    double size;  // device-independent pixels, before the desktop's factor for texts
    ColorRole color;
  };

  // `width` of the slot; 0: as wide as the symbol.
  ToastSymbol(const Look& look, double width, QWidget* parent);

  // At once.
  void set(const Look& look);
  // Over `seconds`, or at once where the user wants no motion.
  void changeTo(const Look& look, double seconds);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Look look_;
  Look before_;
  double width_;
  QVariantAnimation change_;  // from before_ to look_: 0 to 1
};

}  // namespace horalo
