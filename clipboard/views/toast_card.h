#pragma once

#include <QImage>
#include <QWidget>

#include "clipboard/views/toast_shadow.h"
#include "ui/material.h"

namespace horalo {

// How a toast's card looks.
struct ToastStyle {
  double radius = 0;  // of the corners; 0: as round as they can be
  double outlineOpacity = 0;
  double outlineWidth = 1;
  ShadowStyle shadow;
};

// The card on which a toast's content lies, its shadow, and the padding in which that falls.
class ToastCard : public QWidget {
  Q_OBJECT
 public:
  // On all sides of the card.
  static constexpr int kPadding = 16;

  ToastCard(const ToastStyle& style, QWidget* parent);

  void setBackdrop(Backdrop backdrop);
  Backdrop backdrop() const { return backdrop_; }

  // The physical pixels of the card itself.
  QRegion shape() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QRect cardRect() const;
  QRectF cardRect(double scale) const;
  double radius() const;

  ToastStyle style_;
  Backdrop backdrop_ = Backdrop::opaque;
  QImage shadow_;  // for the size and scale at which it was painted last
};

}  // namespace horalo
