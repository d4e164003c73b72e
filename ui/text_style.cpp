#include "ui/text_style.h"

#include <QFontMetricsF>
#include <QPainter>

#include "ui/fonts.h"
#include "ui/pixel_grid.h"

namespace horalo {

QFont fontOf(const TextStyle& style) {
  return style.fixed ? fixedFont(style.size, style.weight)
                     : interfaceFont(style.size, style.weight);
}

QColor colorOf(const TextStyle& style) {
  return color(style.color, style.opacity);
}

double centredBaseline(const QFont& font, double centre) {
  return centre + QFontMetricsF(font).capHeight() / 2;
}

QSizeF lineSize(const QFont& font, const QString& text) {
  const QFontMetricsF metrics(font);
  return {metrics.horizontalAdvance(text), metrics.boundingRect(text).height()};
}

void drawLine(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text,
              const QFont& font, const QColor& color) {
  const QFontMetricsF metrics(font);
  QString shown = text;
  double width = metrics.horizontalAdvance(shown);
  if (width > rect.width()) {
    shown = metrics.elidedText(text, Qt::ElideRight, rect.width());
    width = metrics.horizontalAdvance(shown);
  }
  double x = rect.left();
  if (alignment.testFlag(Qt::AlignRight)) x = rect.right() - width;
  if (alignment.testFlag(Qt::AlignHCenter)) x = rect.center().x() - width / 2;
  painter.setFont(font);
  painter.setPen(color);
  painter.setLayoutDirection(Qt::LayoutDirectionAuto);  // the text's own, not the widget's
  QPointF start = snapped(painter, QPointF(x, centredBaseline(font, rect.center().y())));
  // Where the line just fits, what hangs below it matters more than the middle of its capitals.
  const double lowest = rect.bottom() - metrics.boundingRect(shown).bottom();
  if (start.y() > lowest) start.ry() -= snappedThickness(painter, start.y() - lowest);
  painter.drawText(start, shown);
}

}  // namespace horalo
