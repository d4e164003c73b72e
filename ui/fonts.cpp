#include "ui/fonts.h"

#include <QApplication>
#include <QFontDatabase>
#include <algorithm>

#include "ui/appearance.h"

namespace horalo {
namespace {

QFont sized(QFont font, double size, QFont::Weight weight) {
  font.setPixelSize(std::max(1, qRound(scaledLength(size))));
  font.setWeight(weight);
  font.setItalic(false);
  return font;
}

}  // namespace

QFont interfaceFont(double size, QFont::Weight weight) {
  return sized(QGuiApplication::font(), size, weight);
}

QFont fixedFont(double size, QFont::Weight weight) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setStyleHint(QFont::Monospace);
  return sized(font, size, weight);
}

double scaledLength(double length) {
  return length * Appearance::shared().textScale();
}

}  // namespace horalo
