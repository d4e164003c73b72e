#include "ui/divider.h"

#include <QPainter>

#include "ui/appearance.h"
#include "ui/colors.h"
#include "ui/pixel_grid.h"

namespace horalo {

void drawDivider(QPainter& painter, const QRectF& rect, Qt::Orientation orientation) {
  const double thickness = hairline(painter);
  QRectF line = snapped(painter, rect);
  if (orientation == Qt::Horizontal) {
    line.setHeight(thickness);
  } else {
    line.setWidth(thickness);
  }
  painter.fillRect(line, color(ColorRole::separator));
}

Divider::Divider(Qt::Orientation orientation, QWidget* parent)
    : QWidget(parent), orientation_(orientation) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  if (orientation == Qt::Horizontal) {
    setFixedHeight(1);
  } else {
    setFixedWidth(1);
  }
  connect(&Appearance::shared(), &Appearance::changed, this, qOverload<>(&QWidget::update));
}

void Divider::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  drawDivider(painter, rect(), orientation_);
}

}  // namespace horalo
