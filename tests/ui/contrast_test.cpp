#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QPainter>
#include <cmath>

#include "ui/appearance.h"
#include "ui/colors.h"
#include "ui/material.h"

// Texts stay readable on the material, whatever shines through it.

namespace horalo {
namespace {

using testing::Eq;
using testing::Ge;

double linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

// Contrast as the Web Content Accessibility Guidelines count it: 1 to 21.
double contrast(const QColor& a, const QColor& b) {
  const auto [low, high] = std::minmax({luminance(a), luminance(b)});
  return (high + 0.05) / (low + 0.05);
}

QColor over(const QColor& upper, const QColor& lower) {
  const auto mix = [&](float u, float l) { return u * upper.alphaF() + l * (1 - upper.alphaF()); };
  return QColor::fromRgbF(mix(upper.redF(), lower.redF()), mix(upper.greenF(), lower.greenF()),
                          mix(upper.blueF(), lower.blueF()));
}

// What the material looks like in its middle with `behind` behind it.
QColor material(Backdrop backdrop, const QColor& behind) {
  QImage image(9, 9, QImage::Format_ARGB32_Premultiplied);
  image.fill(behind);
  QPainter painter(&image);
  drawMaterial(painter, image.rect(), {}, backdrop);
  painter.end();
  return image.pixelColor(4, 4);
}

TEST(Contrast, TextsAreReadableOverBlackAndOverWhite) {
  int run = 0;
  for (const bool dark : {false, true}) {
    DesktopAppearance desktop;
    desktop.dark = dark;
    Appearance::shared().setDesktop(desktop);
    for (const auto backdrop : {Backdrop::opaque, Backdrop::translucent, Backdrop::blurred}) {
      for (const QColor behind : {QColor(Qt::black), QColor(Qt::white)}) {
        const QColor plain = material(backdrop, behind);
        const QColor highlighted = over(color(ColorRole::primary, 0.08), plain);
        const QColor chip = over(color(ColorRole::primary, 0.10), highlighted);
        const auto readable = [&](const QColor& text, const QColor& on, double least,
                                  const char* what) {
          EXPECT_THAT(contrast(over(text, on), on), Ge(least))
              << what << (dark ? ", dark" : ", light") << ", backdrop "
              << static_cast<int>(backdrop) << " over " << behind.name().toStdString();
          ++run;
        };
        readable(color(ColorRole::primary), plain, 4.5, "value");
        readable(color(ColorRole::secondary), plain, 4.5, "label");
        readable(color(ColorRole::secondary, 0.73), plain, 3, "examples");
        readable(color(ColorRole::primary), highlighted, 4.5, "highlighted value");
        readable(color(ColorRole::secondary), highlighted, 4.5, "highlighted label");
        readable(color(ColorRole::hint), chip, 4.5, "copy hint");
      }
    }
  }
  Appearance::shared().setDesktop({});
  EXPECT_THAT(run, Eq(2 * 3 * 2 * 6));
}

TEST(Contrast, SettingsAreReadable) {
  int run = 0;
  for (const bool dark : {false, true}) {
    DesktopAppearance desktop;
    desktop.dark = dark;
    Appearance::shared().setDesktop(desktop);
    for (const auto background :
         {ColorRole::window, ColorRole::section, ColorRole::controlBackground}) {
      for (const auto text : {ColorRole::primary, ColorRole::secondary}) {
        const QColor on = color(background);
        EXPECT_THAT(contrast(over(color(text), on), on), Ge(4.5));
        ++run;
      }
    }
  }
  Appearance::shared().setDesktop({});
  EXPECT_THAT(run, Eq(12));
}

}  // namespace
}  // namespace horalo
