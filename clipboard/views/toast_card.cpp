#include "clipboard/views/toast_card.h"

#include <QPainter>
#include <cmath>

#include "ui/appearance.h"
#include "ui/colors.h"

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
  const double scale = devicePixelRatioF();
  const QRectF card = cardRect(scale);
  const QRect pixels(qRound(card.x() * scale), qRound(card.y() * scale),
                     qRound(card.width() * scale), qRound(card.height() * scale));
  return roundedMask(pixels, radius() * scale);
}

QRect ToastCard::cardRect() const {
  return rect().adjusted(kPadding, kPadding, -kPadding, -kPadding);
}

// The same with its edges on physical pixels.
QRectF ToastCard::cardRect(double scale) const {
  const auto snapped = [scale](double length) { return std::round(length * scale) / scale; };
  const QRect card = cardRect();
  return {QPointF(snapped(card.x()), snapped(card.y())),
          QPointF(snapped(card.x() + card.width()), snapped(card.y() + card.height()))};
}

double ToastCard::radius() const {
  return style_.radius > 0 ? style_.radius : cardRect().height() / 2.0;
}

void ToastCard::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const double scale = painter.deviceTransform().m22();
  const QRectF card = cardRect(scale);
  if (backdrop_ == Backdrop::opaque) {
    // At a scale between two whole numbers the window's shape is rounded up to pixels around the
    // card.
    painter.fillRect(rect(), color(ColorRole::material));
  } else {
    if (shadow_.size() != (QSizeF(size()) * scale).toSize() ||
        shadow_.devicePixelRatio() != scale) {
      shadow_ = roundedShadow(size(), card, radius(), style_.shadow, scale);
    }
    painter.drawImage(QPointF(0, 0), shadow_);
  }
  drawMaterial(painter, card, {radius(), style_.outlineOpacity, style_.outlineWidth}, backdrop_);
}

}  // namespace horalo
