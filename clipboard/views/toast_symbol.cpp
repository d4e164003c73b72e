#include "clipboard/views/toast_symbol.h"

#include <QPainter>
#include <cmath>

#include "ui/appearance.h"
#include "ui/fonts.h"

namespace horalo {

ToastSymbol::ToastSymbol(const Look& look, double width, QWidget* parent)
    : QWidget(parent), look_(look), before_(look), width_(width) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  change_.setStartValue(0.0);
  change_.setEndValue(1.0);
  change_.setEasingCurve(QEasingCurve::InOutQuad);
  connect(&change_, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
  connect(&Appearance::shared(), &Appearance::changed, this, [this] {
    updateGeometry();
    update();
  });
}

void ToastSymbol::set(const Look& look) {
  change_.stop();
  look_ = look;
  updateGeometry();
  update();
}

void ToastSymbol::changeTo(const Look& look, double seconds) {
  before_ = look_;
  set(look);
  if (Appearance::shared().reducedMotion()) return;
  change_.setDuration(static_cast<int>(std::lround(seconds * 1000)));
  change_.start();
}

QSize ToastSymbol::sizeHint() const {
  const int size = static_cast<int>(std::ceil(scaledLength(look_.size)));
  return {width_ > 0 ? static_cast<int>(std::ceil(scaledLength(width_))) : size, size};
}

void ToastSymbol::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const bool changes = change_.state() == QAbstractAnimation::Running;
  const double share = changes ? change_.currentValue().toDouble() : 1;
  const auto draw = [&](const Look& look, double opacity) {
    if (opacity <= 0) return;
    painter.setOpacity(opacity);
    drawSymbol(painter, look.symbol, QRectF(rect()).center(), scaledLength(look.size),
               color(look.color));
  };
  draw(before_, 1 - share);
  draw(look_, share);
}

}  // namespace horalo
