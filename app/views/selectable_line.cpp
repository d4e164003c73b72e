#include "app/views/selectable_line.h"

#include <QPainter>
#include <algorithm>

#include "ui/pixel_grid.h"
#include "ui/text_style.h"

namespace horalo {
namespace {

constexpr double kEndless = 1 << 20;  // wider than any value is

}  // namespace

void SelectableLine::setText(const QString& text, const QFont& font,
                             Qt::LayoutDirection direction) {
  if (text != text_) clear();
  text_ = text;
  font_ = font;
  QTextOption option;
  option.setWrapMode(QTextOption::NoWrap);
  option.setTextDirection(direction);
  option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
  layout_.setText(text);
  layout_.setFont(font);
  layout_.setTextOption(option);
  layout_.beginLayout();
  QTextLine line = layout_.createLine();
  if (line.isValid()) line.setLineWidth(kEndless);
  width_ = line.isValid() ? line.naturalTextWidth() : 0;
  layout_.endLayout();
}

void SelectableLine::setArea(const QRectF& area) {
  area_ = area;
  scroll_ = std::clamp(scroll_, 0.0, std::max(0.0, width_ - area.width()));
}

bool SelectableLine::covers(QPointF point) const {
  const double right = area_.left() + std::min(width_, area_.width());
  return point.x() >= area_.left() && point.x() < right;
}

int SelectableLine::positionAt(double x) const {
  const QTextLine line = layout_.lineAt(0);
  return line.isValid() ? line.xToCursor(x - area_.left() + scroll_) : 0;
}

void SelectableLine::begin(double x) {
  anchor_ = positionAt(x);
}

bool SelectableLine::extend(double x) {
  double scroll = scroll_;
  if (x > area_.right()) scroll += x - area_.right();
  if (x < area_.left()) scroll -= area_.left() - x;
  scroll = std::clamp(scroll, 0.0, std::max(0.0, width_ - area_.width()));
  const bool scrolled = scroll != scroll_;
  scroll_ = scroll;

  const auto [start, end] = std::minmax({anchor_, positionAt(x)});
  const bool changed = start != start_ || end != end_;
  start_ = start;
  end_ = end;
  return changed || scrolled;
}

bool SelectableLine::clear() {
  const bool changed = hasSelection() || scroll_ > 0;
  start_ = end_ = 0;
  scroll_ = 0;
  return changed;
}

void SelectableLine::draw(QPainter& painter, const QColor& colour,
                          const QColor& selectionColour) const {
  if (!fits() && !hasSelection() && scroll_ <= 0) {
    return drawLine(painter, area_, Qt::AlignLeft, text_, font_, colour);
  }
  const QTextLine line = layout_.lineAt(0);
  if (!line.isValid()) return;
  QList<QTextLayout::FormatRange> ranges;
  if (hasSelection()) {
    QTextLayout::FormatRange range;
    range.start = start_;
    range.length = end_ - start_;
    range.format.setBackground(selectionColour);
    ranges.append(range);
  }
  const double baseline = centredBaseline(font_, area_.center().y());
  const QPointF start = snapped(painter, QPointF(area_.left() - scroll_, baseline));
  painter.save();
  if (!fits()) painter.setClipRect(area_);
  painter.setPen(colour);
  layout_.draw(&painter, start - QPointF(0, line.ascent()), ranges);
  painter.restore();
}

}  // namespace horalo
