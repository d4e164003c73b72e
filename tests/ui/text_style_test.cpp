#include "ui/text_style.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>
#include <vector>

#include "ui/fonts.h"

namespace horalo {
namespace {

using testing::AllOf;
using testing::DoubleNear;
using testing::Eq;
using testing::Ge;
using testing::Le;

QImage canvas(double scale) {
  QImage image(qRound(200 * scale), qRound(40 * scale), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(scale);
  image.fill(Qt::transparent);
  return image;
}

// The rectangle, in device-independent pixels, of everything that is more than half inked.
QRectF inkOf(const QImage& image) {
  QRect ink;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y).alpha() > 127) ink |= QRect(x, y, 1, 1);
    }
  }
  const double scale = image.devicePixelRatio();
  return {ink.x() / scale, ink.y() / scale, ink.width() / scale, ink.height() / scale};
}

TEST(TextStyle, CapitalsStandInTheMiddle) {
  int run = 0;
  for (const double scale : {1.0, 1.25, 2.0}) {
    for (const double size : {10.0, 11.0, 12.0, 14.0, 20.0}) {
      for (const bool fixed : {false, true}) {
        QImage image = canvas(scale);
        QPainter painter(&image);
        drawLine(painter, QRectF(0, 0, 200, 40), Qt::AlignLeft, QStringLiteral("HHH"),
                 fixed ? fixedFont(size) : interfaceFont(size), Qt::black);
        painter.end();
        // Hinting and the pixel grid each move an edge by up to a pixel.
        EXPECT_THAT(inkOf(image).center().y(), DoubleNear(20, 1.01 / scale))
            << size << " at " << scale;
        ++run;
      }
    }
  }
  EXPECT_THAT(run, Eq(30));
}

TEST(TextStyle, LinesStandToTheSideTheyAreToldTo) {
  const auto ink = [](Qt::Alignment alignment) {
    QImage image = canvas(1);
    QPainter painter(&image);
    drawLine(painter, QRectF(20, 0, 160, 40), alignment, QStringLiteral("HHH"), fixedFont(14),
             Qt::black);
    painter.end();
    return inkOf(image);
  };
  EXPECT_THAT(ink(Qt::AlignLeft).left(), DoubleNear(20, 3));
  EXPECT_THAT(ink(Qt::AlignRight).right(), DoubleNear(180, 3));
  EXPECT_THAT(ink(Qt::AlignHCenter).center().x(), DoubleNear(100, 1.5));
}

TEST(TextStyle, LongLinesEndInAnEllipsisWithinTheirRectangle) {
  QImage image = canvas(1);
  QPainter painter(&image);
  drawLine(painter, QRectF(20, 0, 100, 40), Qt::AlignLeft, QString(500, u'H'), fixedFont(14),
           Qt::black);
  painter.end();
  EXPECT_THAT(inkOf(image).right(), AllOf(Ge(90), Le(120)));
}

// The lowest row of pixels with any ink in it.
int lowestInk(const QImage& image) {
  for (int y = image.height() - 1; y >= 0; --y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y).alpha() > 40) return y;
    }
  }
  return -1;
}

TEST(TextStyle, NothingIsCutOffALineThatJustFits) {
  int run = 0;
  for (const double scale : {1.0, 1.25, 2.0}) {
    for (const double size : {10.0, 11.0, 12.0, 13.0, 14.0, 20.0}) {
      for (const char* text :
           {"gjpqy", "\xD9\x82\xD8\xA8\xD9\x84 \xD8\xB3\xD9\x86\xD8\xAA\xD9\x8A\xD9\x86",
            "\xE0\xB8\x9B\xE0\xB8\xB9"}) {
        const QFont font = interfaceFont(size);
        const QString line = QString::fromUtf8(text);
        const double height = std::ceil(lineSize(font, line).height());
        const auto inkIn = [&](const QRectF& clip) {
          QImage image = canvas(scale);
          QPainter painter(&image);
          painter.setClipRect(clip);
          drawLine(painter, QRectF(0, 4, 200, height), Qt::AlignLeft, line, font, Qt::black);
          painter.end();
          return lowestInk(image);
        };
        EXPECT_EQ(inkIn({0, 4, 200, height}), inkIn({0, 0, 200, 40})) << text << ' ' << size;
        ++run;
      }
    }
  }
  EXPECT_THAT(run, Eq(54));
}

TEST(TextStyle, OpacityMultiplies) {
  TextStyle style;
  style.color = ColorRole::primary;
  style.opacity = 0.5;
  EXPECT_THAT(colorOf(style).alphaF(), testing::FloatNear(0.5F, 0.01F));
  EXPECT_THAT(fontOf(style).pixelSize(), Eq(13));
}

}  // namespace
}  // namespace horalo
