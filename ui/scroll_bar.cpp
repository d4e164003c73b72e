#include "ui/scroll_bar.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>

#include "ui/colors.h"

namespace horalo {
namespace {

constexpr double kHandleWidth = 5;
constexpr double kShortestHandle = 24;
constexpr double kEndMargin = 3;
constexpr double kRestingOpacity = 0.18;
constexpr double kTouchedOpacity = 0.4;

}  // namespace

SlimScrollBar::SlimScrollBar(QWidget* parent) : QScrollBar(Qt::Vertical, parent) {
  setAttribute(Qt::WA_OpaquePaintEvent, false);
  setAttribute(Qt::WA_Hover);
  setContextMenuPolicy(Qt::NoContextMenu);
}

QSize SlimScrollBar::sizeHint() const {
  return {kWidth, QScrollBar::sizeHint().height()};
}

bool SlimScrollBar::event(QEvent* event) {
  if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave) update();
  return QScrollBar::event(event);
}

void SlimScrollBar::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  const double range = maximum() - minimum();
  if (range <= 0) return;
  const double track = height() - 2 * kEndMargin;
  const double length = std::max(kShortestHandle, track * pageStep() / (range + pageStep()));
  const double top = kEndMargin + (track - length) * (value() - minimum()) / range;
  const bool touched = underMouse() || isSliderDown();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color(ColorRole::primary, touched ? kTouchedOpacity : kRestingOpacity));
  painter.drawRoundedRect(QRectF((width() - kHandleWidth) / 2, top, kHandleWidth, length),
                          kHandleWidth / 2, kHandleWidth / 2);
}

}  // namespace horalo
