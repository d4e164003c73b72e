#include "ui/symbols.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QPainter>
#include <vector>

namespace horalo {
namespace {

using testing::Eq;
using testing::Gt;
using testing::Lt;

const std::vector<Symbol> kAll = {Symbol::checkmark,
                                  Symbol::checkmarkCircleFill,
                                  Symbol::clock,
                                  Symbol::docOnDoc,
                                  Symbol::gear,
                                  Symbol::globe,
                                  Symbol::magnifyingglass,
                                  Symbol::questionmarkCircle,
                                  Symbol::xmarkCircleFill};

// The share of the square that is inked, 0 to 1.
double ink(const QImage& image) {
  double sum = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) sum += image.pixelColor(x, y).alphaF();
  }
  return sum / (image.width() * image.height());
}

TEST(Symbols, AreAllThereInTheColourAskedFor) {
  const QColor colour(200, 40, 90);
  int run = 0;
  for (const Symbol symbol : kAll) {
    const QImage image = symbolImage(symbol, 32, colour, 1);
    ASSERT_THAT(image.size(), Eq(QSize(32, 32)));
    EXPECT_THAT(ink(image), Gt(0.1)) << static_cast<int>(symbol);
    EXPECT_THAT(ink(image), Lt(0.8)) << static_cast<int>(symbol);
    for (int y = 0; y < 32; ++y) {
      for (int x = 0; x < 32; ++x) {
        const QColor pixel = image.pixelColor(x, y);
        if (pixel.alpha() < 255) continue;
        ASSERT_THAT(pixel, Eq(colour));
        ++run;
      }
    }
  }
  EXPECT_THAT(run, Gt(9 * 32));
}

TEST(Symbols, KeepTheTransparencyOfTheirColour) {
  const QImage image = symbolImage(Symbol::xmarkCircleFill, 24, QColor(0, 0, 0, 128), 1);
  EXPECT_THAT(image.pixelColor(5, 12).alpha(), Eq(128));
  EXPECT_THAT(image.pixelColor(12, 12).alpha(), Eq(0));  // the cross is cut out
}

TEST(Symbols, AreDrawnAnewForEveryScale) {
  const QImage once = symbolImage(Symbol::globe, 12, Qt::black, 1);
  const QImage twice = symbolImage(Symbol::globe, 12, Qt::black, 2);
  EXPECT_THAT(once.size(), Eq(QSize(12, 12)));
  EXPECT_THAT(twice.size(), Eq(QSize(24, 24)));
  EXPECT_THAT(twice.devicePixelRatio(), Eq(2));
  EXPECT_THAT(twice.deviceIndependentSize(), Eq(QSizeF(12, 12)));
}

TEST(Symbols, AreDrawnOnce) {
  const QImage first = symbolImage(Symbol::gear, 20, Qt::red, 1.25);
  const QImage second = symbolImage(Symbol::gear, 20, Qt::red, 1.25);
  EXPECT_THAT(second.cacheKey(), Eq(first.cacheKey()));
  EXPECT_THAT(symbolImage(Symbol::gear, 20, Qt::blue, 1.25).cacheKey(),
              testing::Ne(first.cacheKey()));
}

TEST(Symbols, LieOnWholePixelsWhereverTheyAreDrawn) {
  // A symbol whose edges are blurred by half a pixel differs from its image.
  const QImage symbol = symbolImage(Symbol::docOnDoc, 16, Qt::black, 1.25);
  int run = 0;
  for (const double at : {20.0, 20.3, 20.5, 20.9}) {
    QImage canvas(60, 60, QImage::Format_ARGB32_Premultiplied);
    canvas.setDevicePixelRatio(1.25);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    drawSymbol(painter, Symbol::docOnDoc, QPointF(at, at), 16, Qt::black);
    painter.end();
    bool found = false;
    for (int y = 0; y < 30 && !found; ++y) {
      for (int x = 0; x < 30 && !found; ++x) {
        QImage part = canvas.copy(x, y, symbol.width(), symbol.height());
        QImage plain = symbol;
        part.setDevicePixelRatio(1);
        plain.setDevicePixelRatio(1);
        found = part == plain.convertToFormat(part.format());
      }
    }
    EXPECT_TRUE(found) << at;
    ++run;
  }
  EXPECT_THAT(run, Eq(4));
}

}  // namespace
}  // namespace horalo
