#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>

class QPainter;

namespace horalo {

// The drawings that stand beside texts; one family, each a square.
enum class Symbol {
  checkmark,
  checkmarkCircleFill,
  clock,
  docOnDoc,
  gear,
  globe,
  magnifyingglass,
  questionmarkCircle,
  xmarkCircleFill
};

// The symbol in one colour, `size` device-independent pixels wide and high, sharp on a screen with
// `scale` physical pixels to one of those. Kept once drawn.
QImage symbolImage(Symbol symbol, double size, const QColor& color, double scale);

// Draws it around `centre`, aligned to whole physical pixels.
void drawSymbol(QPainter& painter, Symbol symbol, QPointF centre, double size, const QColor& color);

}  // namespace horalo
