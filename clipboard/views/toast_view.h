#pragma once

#include <QGraphicsOpacityEffect>
#include <QVariantAnimation>
#include <QWidget>

#include "clipboard/views/toast_card.h"

namespace horalo {

// What both toasts have in common: a card with its shadow that fills a window of its own, and
// fades. The window is as large as its content wants.
class ToastView : public QWidget {
  Q_OBJECT
 public:
  ToastView(const ToastStyle& style, const QString& title);

  // What lies behind the window; to be told before it is shown. Without a compositor nothing fades,
  // and the window is to be cut to shape().
  void setBackdrop(Backdrop backdrop);
  // The physical pixels of the card.
  QRegion shape() const { return card_.shape(); }

  void setAlpha(double alpha);
  void animateAlpha(double alpha, double seconds);

 Q_SIGNALS:
  // The window has another size, or another shape.
  void fitted();

 protected:
  ToastCard& card() { return card_; }
  // To be called whenever the content changed.
  void fitContent();

 private:
  void showAlpha(double alpha);
  void layOut();

  ToastCard card_;
  QGraphicsOpacityEffect* const effect_;  // the card's
  QVariantAnimation animation_;
  double alpha_ = 1;
};

}  // namespace horalo
