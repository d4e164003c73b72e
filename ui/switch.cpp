#include "ui/switch.h"

#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>
#include <cmath>

#include "ui/appearance.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"
#include "ui/pixel_grid.h"
#include "ui/text_style.h"

namespace horalo {
namespace {

constexpr QSizeF kTrack(26, 15);
constexpr double kKnobMargin = 1.5;
constexpr double kGap = 8;
constexpr int kSlideMilliseconds = 120;
constexpr TextStyle kLabel{.size = 12};

QColor blend(const QColor& from, const QColor& to, double share) {
  const auto mix = [share](float a, float b) { return a + (b - a) * static_cast<float>(share); };
  return QColor::fromRgbF(mix(from.redF(), to.redF()), mix(from.greenF(), to.greenF()),
                          mix(from.blueF(), to.blueF()), mix(from.alphaF(), to.alphaF()));
}

}  // namespace

Switch::Switch(const QString& text, QWidget* parent) : QAbstractButton(parent) {
  setText(text);
  setCheckable(true);
  setFocusPolicy(Qt::TabFocus);  // a click leaves the keyboard where it is
  knob_.setStartValue(0.0);
  knob_.setEndValue(1.0);
  knob_.setDuration(kSlideMilliseconds);
  knob_.setEasingCurve(QEasingCurve::InOutQuad);
  connect(&knob_, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
  connect(this, &QAbstractButton::toggled, this, &Switch::moveKnob);
  connect(&Appearance::shared(), &Appearance::changed, this, [this] {
    updateGeometry();
    update();
  });
}

QSize Switch::sizeHint() const {
  double width = kTrack.width();
  if (!text().isEmpty()) width += kGap + QFontMetricsF(fontOf(kLabel)).horizontalAdvance(text());
  const double height = std::max(kTrack.height(), scaledLength(kLabel.size + 4));
  return {static_cast<int>(std::ceil(width)) + 2 * kFocusRingMargin,
          static_cast<int>(std::ceil(height)) + 2 * kFocusRingMargin};
}

void Switch::moveKnob(bool checked) {
  knob_.setDirection(checked ? QAbstractAnimation::Forward : QAbstractAnimation::Backward);
  const bool slides = isVisible() && !Appearance::shared().reducedMotion();
  if (slides) {
    knob_.start();
  } else {
    knob_.stop();
    knob_.setCurrentTime(checked ? kSlideMilliseconds : 0);
    update();
  }
}

void Switch::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!isEnabled()) painter.setOpacity(0.5);

  const QRectF track = snapped(painter, QRectF(QPointF(width() - kFocusRingMargin - kTrack.width(),
                                                       (height() - kTrack.height()) / 2),
                                               kTrack));
  if (!text().isEmpty()) {
    drawLine(painter, QRectF(kFocusRingMargin, 0, track.left() - kGap - kFocusRingMargin, height()),
             Qt::AlignLeft, text(), fontOf(kLabel), colorOf(kLabel));
  }

  const double on = knob_.currentValue().toDouble();
  painter.setPen(Qt::NoPen);
  painter.setBrush(blend(color(ColorRole::controlOff), color(ColorRole::accent), on));
  painter.drawRoundedRect(track, track.height() / 2, track.height() / 2);

  const double size = kTrack.height() - 2 * kKnobMargin;
  const double travel = kTrack.width() - size - 2 * kKnobMargin;
  const QRectF knob(track.left() + kKnobMargin + on * travel, track.top() + kKnobMargin, size,
                    size);
  painter.setBrush(QColor(0, 0, 0, 40));
  painter.drawEllipse(knob.translated(0, 0.75));
  painter.setBrush(color(ColorRole::knob));
  painter.drawEllipse(knob);

  if (hasFocus()) drawFocusRing(painter, track, track.height() / 2);
}

void Switch::keyPressEvent(QKeyEvent* event) {
  // Arrows belong to the window, not to a group of buttons.
  if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Select) {
    QAbstractButton::keyPressEvent(event);
  } else {
    event->ignore();
  }
}

void Switch::amendAccessibleState(QAccessible::State& state) const {
  state.checkable = true;
  state.checked = isChecked();
}

QStringList Switch::accessibleActions() const {
  return {QAccessibleActionInterface::toggleAction()};
}

void Switch::doAccessibleAction(const QString& name) {
  Q_UNUSED(name);
  click();
}

}  // namespace horalo
