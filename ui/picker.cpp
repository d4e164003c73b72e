#include "ui/picker.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "ui/appearance.h"
#include "ui/focus_ring.h"
#include "ui/pixel_grid.h"
#include "ui/text_style.h"

namespace horalo {
namespace {

constexpr TextStyle kText{.size = 12};
constexpr double kHeight = 22;
constexpr double kPadding = 8;
constexpr double kGap = 6;
constexpr double kRadius = 6;
constexpr QSizeF kArrow(7, 3.5);
constexpr double kArrowStroke = 1.4;

void drawArrow(QPainter& painter, QPointF centre) {
  QPainterPath path;
  path.moveTo(centre - QPointF(kArrow.width() / 2, kArrow.height() / 2));
  path.lineTo(centre + QPointF(0, kArrow.height() / 2));
  path.lineTo(centre + QPointF(kArrow.width() / 2, -kArrow.height() / 2));
  painter.setBrush(Qt::NoBrush);
  painter.setPen(
      QPen(color(ColorRole::secondary), kArrowStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(path);
}

}  // namespace

Picker::Picker(QWidget* parent) : QComboBox(parent) {
  setFocusPolicy(Qt::TabFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  updateLook();
  connect(&Appearance::shared(), &Appearance::changed, this, &Picker::updateLook);
}

void Picker::updateLook() {
  setFont(fontOf(kText));
  updateGeometry();
  update();
}

QSize Picker::sizeHint() const {
  const QFontMetricsF metrics(font());
  double widest = 0;
  for (int i = 0; i < count(); ++i)
    widest = std::max(widest, metrics.horizontalAdvance(itemText(i)));
  const double width = widest + 2 * kPadding + kGap + kArrow.width();
  const double height = std::max(kHeight, metrics.height() + 6);
  return {static_cast<int>(std::ceil(width)) + 2 * kFocusRingMargin,
          static_cast<int>(std::ceil(height)) + 2 * kFocusRingMargin};
}

void Picker::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double margin = kFocusRingMargin;
  const QRectF shape = snapped(painter, QRectF(rect()).adjusted(margin, margin, -margin, -margin));
  const double line = snappedThickness(painter, 1);
  painter.setPen(QPen(color(ColorRole::separator), line));
  painter.setBrush(color(ColorRole::controlBackground));
  painter.drawRoundedRect(shape.adjusted(line / 2, line / 2, -line / 2, -line / 2), kRadius,
                          kRadius);
  const double textWidth = shape.width() - 2 * kPadding - kGap - kArrow.width();
  drawLine(painter, QRectF(shape.left() + kPadding, shape.top(), textWidth, shape.height()),
           Qt::AlignLeft, currentText(), font(), colorOf(kText));
  drawArrow(painter,
            QPointF(shape.right() - kPadding - kArrow.width() / 2, shape.center().y() + 0.5));
  if (hasFocus()) drawFocusRing(painter, shape, kRadius);
}

void Picker::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace horalo
