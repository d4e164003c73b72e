#include "ui/colors.h"

#include "ui/appearance.h"

namespace horalo {
namespace {

QColor black(double opacity) {
  return QColor::fromRgbF(0, 0, 0, static_cast<float>(opacity));
}
QColor white(double opacity) {
  return QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity));
}

QColor lightColor(ColorRole role) {
  switch (role) {
    case ColorRole::primary:
      return QColor(0x1B, 0x1C, 0x1E);
    case ColorRole::secondary:
      return black(0.60);
    case ColorRole::hint:
      return black(0.64);
    case ColorRole::material:
      return QColor(0xF6, 0xF6, 0xF8);
    case ColorRole::separator:
      return black(0.10);
    case ColorRole::controlOff:
      return black(0.16);
    case ColorRole::controlBackground:
    case ColorRole::knob:
    case ColorRole::section:
      return QColor(0xFF, 0xFF, 0xFF);
    case ColorRole::window:
      return QColor(0xEC, 0xEC, 0xEF);
    case ColorRole::accent:
      return QColor(0x2F, 0x6F, 0xED);
    case ColorRole::green:
      return QColor(0x1E, 0x8E, 0x3E);
  }
  return {};
}

QColor darkColor(ColorRole role) {
  switch (role) {
    case ColorRole::primary:
    case ColorRole::knob:
      return QColor(0xF2, 0xF2, 0xF4);
    case ColorRole::secondary:
      return white(0.64);
    case ColorRole::hint:
      return white(0.80);
    case ColorRole::material:
      return QColor(0x27, 0x28, 0x2C);
    case ColorRole::separator:
      return white(0.12);
    case ColorRole::controlBackground:
      return QColor(0x36, 0x37, 0x3C);
    case ColorRole::controlOff:
      return white(0.20);
    case ColorRole::window:
      return QColor(0x22, 0x23, 0x27);
    case ColorRole::section:
      return QColor(0x2F, 0x30, 0x35);
    case ColorRole::accent:
      return QColor(0x5B, 0x93, 0xFF);
    case ColorRole::green:
      return QColor(0x4C, 0xC2, 0x6B);
  }
  return {};
}

}  // namespace

QColor color(ColorRole role) {
  const Appearance& appearance = Appearance::shared();
  if (role == ColorRole::accent && appearance.accent())
    return QColor::fromRgb(*appearance.accent());
  return appearance.isDark() ? darkColor(role) : lightColor(role);
}

QColor color(ColorRole role, double opacity) {
  QColor result = color(role);
  result.setAlphaF(result.alphaF() * static_cast<float>(opacity));
  return result;
}

}  // namespace horalo
