#include "ui/symbol_button.h"

#include <QKeyEvent>
#include <QPainter>
#include <cmath>

#include "ui/appearance.h"
#include "ui/colors.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"

namespace horalo {

SymbolButton::SymbolButton(Symbol symbol, double size, const QString& name, QWidget* parent)
    : QAbstractButton(parent), symbol_(symbol), size_(size) {
  setAccessibleName(name);
  setFocusPolicy(Qt::TabFocus);  // a click leaves the keyboard where it is
  setCursor(Qt::ArrowCursor);
  connect(&Appearance::shared(), &Appearance::changed, this, [this] {
    updateGeometry();
    update();
  });
}

QSize SymbolButton::sizeHint() const {
  const int side = static_cast<int>(std::ceil(scaledLength(size_))) + 2 * kFocusRingMargin;
  return {side, side};
}

void SymbolButton::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  const double size = scaledLength(size_);
  const QPointF centre = QRectF(rect()).center();
  const bool strong = isDown() || underMouse();
  drawSymbol(painter, symbol_, centre, size,
             strong ? color(ColorRole::primary, 0.8) : color(ColorRole::secondary));
  if (hasFocus()) {
    const QRectF shape(centre.x() - size / 2, centre.y() - size / 2, size, size);
    drawFocusRing(painter, shape, size / 2);
  }
}

void SymbolButton::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Select:
      QAbstractButton::keyPressEvent(event);
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      click();
      break;
    default:
      event->ignore();
  }
}

void SymbolButton::enterEvent(QEnterEvent* event) {
  QAbstractButton::enterEvent(event);
  update();
}

void SymbolButton::leaveEvent(QEvent* event) {
  QAbstractButton::leaveEvent(event);
  update();
}

QStringList SymbolButton::accessibleActions() const {
  return {QAccessibleActionInterface::pressAction()};
}

void SymbolButton::doAccessibleAction(const QString& name) {
  Q_UNUSED(name);
  click();
}

}  // namespace horalo
