#include "ui/material.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QPainter>

#include "ui/colors.h"

namespace horalo {
namespace {

using testing::AllOf;
using testing::Eq;
using testing::Gt;
using testing::Lt;

constexpr MaterialShape kShape{.radius = 12, .outlineOpacity = 0.15};

QImage drawn(Backdrop backdrop) {
  QImage image(100, 60, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  drawMaterial(painter, image.rect(), kShape, backdrop);
  return image;
}

TEST(Material, LeavesTheCornersOutWhereTheyCanBeSeenThrough) {
  int run = 0;
  for (const auto backdrop : {Backdrop::translucent, Backdrop::blurred}) {
    const QImage image = drawn(backdrop);
    for (const QPoint corner : {QPoint(0, 0), QPoint(99, 0), QPoint(0, 59), QPoint(99, 59)}) {
      EXPECT_THAT(image.pixelColor(corner).alpha(), Eq(0));
      ++run;
    }
    EXPECT_THAT(image.pixelColor(50, 30).alpha(), AllOf(Gt(220), Lt(255)));
  }
  EXPECT_THAT(run, Eq(8));
}

TEST(Material, IsOpaqueEverywhereWithoutACompositor) {
  const QImage image = drawn(Backdrop::opaque);
  EXPECT_THAT(image.pixelColor(0, 0).alpha(), Eq(255));
  EXPECT_THAT(image.pixelColor(50, 30), Eq(color(ColorRole::material)));
}

TEST(Material, IsOutlinedInside) {
  const QImage image = drawn(Backdrop::opaque);
  for (const QPoint edge : {QPoint(50, 0), QPoint(50, 59), QPoint(0, 30), QPoint(99, 30)}) {
    EXPECT_THAT(image.pixelColor(edge), testing::Ne(color(ColorRole::material)));
  }
  EXPECT_THAT(image.pixelColor(50, 1), Eq(color(ColorRole::material)));
}

// The corner's pixels that the window's shape leaves are outline, not material.
TEST(Material, ItsOutlineReachesTheEdgeOfTheShape) {
  const QImage image = drawn(Backdrop::opaque);
  const QColor outline = image.pixelColor(50, 0);
  const QRegion mask = roundedMask(image.rect(), kShape.radius);
  int run = 0;
  for (int x = 0; x < 12; ++x) {
    for (int y = 0; y < 12; ++y) {
      const bool isEdge = mask.contains(QPoint(x, y)) && !mask.contains(QPoint(x - 1, y - 1));
      if (!isEdge) continue;
      EXPECT_THAT(image.pixelColor(x, y), testing::Ne(color(ColorRole::material))) << x << ' ' << y;
      ++run;
    }
  }
  EXPECT_THAT(run, Gt(12));
  EXPECT_THAT(image.pixelColor(0, 0), Eq(outline));
}

TEST(RoundedMask, IsRoundAtItsCornersAndSymmetric) {
  const QRegion mask = roundedMask(QRect(0, 0, 100, 60), 12);
  EXPECT_FALSE(mask.contains(QPoint(0, 0)));
  EXPECT_FALSE(mask.contains(QPoint(2, 2)));
  EXPECT_TRUE(mask.contains(QPoint(4, 4)));
  EXPECT_TRUE(mask.contains(QPoint(12, 0)));
  EXPECT_TRUE(mask.contains(QPoint(0, 12)));
  int run = 0;
  for (int y = 0; y < 60; ++y) {
    for (int x = 0; x < 100; ++x) {
      const bool inside = mask.contains(QPoint(x, y));
      ASSERT_THAT(mask.contains(QPoint(99 - x, y)), Eq(inside)) << x << ' ' << y;
      ASSERT_THAT(mask.contains(QPoint(x, 59 - y)), Eq(inside)) << x << ' ' << y;
      ++run;
    }
  }
  EXPECT_THAT(run, Eq(6000));
}

}  // namespace
}  // namespace horalo
