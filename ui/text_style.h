#pragma once

#include <QFont>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include "ui/colors.h"

class QPainter;

namespace horalo {

// How one line of text looks.
struct TextStyle {
  double size = 13;  // device-independent pixels, before the desktop's factor for texts
  QFont::Weight weight = QFont::Normal;
  ColorRole color = ColorRole::primary;
  double opacity = 1;
  bool fixed = false;  // the font in which every character is equally wide
};

QFont fontOf(const TextStyle& style);
QColor colorOf(const TextStyle& style);

// The baseline on which capital letters stand in the middle around `centre`. To the eye that is the
// middle of a line, not the middle of the font's line box.
double centredBaseline(const QFont& font, double centre);

// What one line of text takes, so that nothing of it is cut. Other scripts than the font's own may
// need more height than its Latin letters.
QSizeF lineSize(const QFont& font, const QString& text);

// Draws one line in the middle of the height of `rect`, to the side that `alignment` says, cut with
// an ellipsis where it is too long. The text runs in the direction of its own script.
void drawLine(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text,
              const QFont& font, const QColor& color);

}  // namespace horalo
