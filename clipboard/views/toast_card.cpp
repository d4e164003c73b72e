#include "clipboard/views/toast_card.h"

#include <QPainter>

#include "ui/appearance.h"

namespace horalo {

ToastCard::ToastCard(const ToastStyle& style, QWidget* parent) : QWidget(parent), style_(style) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  connect(&Appearance::shared(), &Appearance::changed, this, qOverload<>(&QWidget::update));
}

void ToastCard::setBackdrop(Backdrop backdrop) {
  if (backdrop == backdrop_) return;
  backdrop_ = backdrop;
  update();
}

QRegion ToastCard::shape() const {
  return roundedMask(cardRect(), radius());
}

QRect ToastCard::cardRect() const {
  return rect().adjusted(kPadding, kPadding, -kPadding, -kPadding);
}

double ToastCard::radius() const {
  return style_.radius > 0 ? style_.radius : cardRect().height() / 2.0;
}

void ToastCard::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (backdrop_ != Backdrop::opaque) {
    const double scale = painter.device()->devicePixelRatioF();
    if (shadow_.size() != (QSizeF(size()) * scale).toSize() ||
        shadow_.devicePixelRatio() != scale) {
      shadow_ = roundedShadow(size(), cardRect(), radius(), style_.shadow, scale);
    }
    painter.drawImage(QPointF(0, 0), shadow_);
  }
  drawMaterial(painter, cardRect(), {radius(), style_.outlineOpacity, style_.outlineWidth},
               backdrop_);
}

}  // namespace horalo
