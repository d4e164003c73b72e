#include "clipboard/views/toast_view.h"

#include <QLayout>
#include <cmath>

#include "ui/appearance.h"

namespace horalo {

ToastView::ToastView(const ToastStyle& style, const QString& title)
    : card_(style, this), effect_(new QGraphicsOpacityEffect(&card_)) {
  setWindowTitle(title);
  setLayoutDirection(Qt::LeftToRight);
  card_.setGraphicsEffect(effect_);
  effect_->setEnabled(false);  // costs nothing while nothing fades
  animation_.setEasingCurve(QEasingCurve::InOutSine);
  connect(&animation_, &QVariantAnimation::valueChanged, this,
          [this](const QVariant& value) { showAlpha(value.toDouble()); });
  connect(&Appearance::shared(), &Appearance::changed, this, &ToastView::fitContent,
          Qt::QueuedConnection);
}

void ToastView::setBackdrop(Backdrop backdrop) {
  card_.setBackdrop(backdrop);
  showAlpha(alpha_);
}

void ToastView::setAlpha(double alpha) {
  animation_.stop();
  showAlpha(alpha);
}

void ToastView::animateAlpha(double alpha, double seconds) {
  if (card_.backdrop() == Backdrop::opaque) return setAlpha(alpha);
  animation_.stop();
  animation_.setStartValue(alpha_);
  animation_.setEndValue(alpha);
  animation_.setDuration(static_cast<int>(std::lround(seconds * 1000)));
  animation_.start();
}

void ToastView::showAlpha(double alpha) {
  alpha_ = alpha;
  effect_->setEnabled(alpha < 1 && card_.backdrop() != Backdrop::opaque);
  effect_->setOpacity(alpha);
}

// By hand, because a layout would wait until the window is shown, and its shape and its place
// depend on its size before.
void ToastView::fitContent() {
  layOut();
  const QSize size = card_.sizeHint();
  resize(size);
  card_.resize(size);
  layOut();
  Q_EMIT fitted();
}

void ToastView::layOut() {
  card_.layout()->invalidate();
  card_.layout()->activate();
}

}  // namespace horalo
