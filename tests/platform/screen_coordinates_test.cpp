#include "platform/qt/screen_coordinates.h"

#include <gtest/gtest.h>

#include <limits>

namespace horalo {
namespace {

TEST(ScreenCoordinatesTest, CountFromTheBottomOfThePrimaryScreen) {
  EXPECT_EQ(fromQt(QRect(480, 120, 480, 280), 900), (Rect{480, 500, 480, 280}));
  EXPECT_EQ(fromQt(QPoint(10, 890), 900), (Point{10, 10}));
  EXPECT_EQ(toQt({480, 500}, 280, 900), QPoint(480, 120));
}

TEST(ScreenCoordinatesTest, ReachOtherScreensWithNegativeNumbers) {
  // 1280x1024 to the right of a primary screen of 1440x900, tops aligned.
  EXPECT_EQ(fromQt(QRect(1440, 0, 1280, 1024), 900), (Rect{1440, -124, 1280, 1024}));
  EXPECT_EQ(toQt({-1000, 950}, 100, 900), QPoint(-1000, -150));
}

TEST(ScreenCoordinatesTest, GoThereAndBack) {
  for (const int bottom : {0, 768, 900, 2160}) {
    for (const QPoint corner : {QPoint(0, 0), QPoint(-7, 33), QPoint(1920, -500)}) {
      const Rect rect = fromQt(QRect(corner, QSize(480, 280)), bottom);
      EXPECT_EQ(toQt({rect.x, rect.y}, 280, bottom), corner);
    }
  }
}

TEST(ScreenCoordinatesTest, RoundToWholePixels) {
  EXPECT_EQ(toQt({393.4, 500.6}, 280, 900), QPoint(393, 119));
}

TEST(ScreenCoordinatesTest, StayWithinWhatAWindowSystemCanExpress) {
  EXPECT_EQ(toQt({1e300, -1e300}, 280, 900), QPoint(32767, 32767));
  EXPECT_EQ(toQt({-1e300, 1e300}, 280, 900), QPoint(-32768, -32768));
  constexpr double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(toQt({infinity, -infinity}, 280, 900), QPoint(32767, 32767));
}

}  // namespace
}  // namespace horalo
