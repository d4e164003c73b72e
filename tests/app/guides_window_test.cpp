#include "app/views/guides_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/fakes/fake_window_backend.h"

namespace horalo {
namespace {

using testing::Eq;

constexpr Rect kHome{480, 512, 480, 280};  // its upper edge is 108 below that of the screen
constexpr Rect kScreen{0, 0, 1440, 900};

bool isDash(const QImage& image, int x, int y) {
  return image.pixelColor(x, y).alpha() > 0;
}

TEST(GuidesWindow, DrawsThreeDashedLines) {
  FakeWindowBackend backend;
  GuidesWindow window(backend, kHome, kScreen);
  EXPECT_THAT(window.windowTitle(), Eq(QStringLiteral("Horalo Guides")));
  EXPECT_THAT(window.size(), Eq(QSize(1440, 900)));
  EXPECT_THAT(backend.roles[&window], Eq(WindowRole::guides));
  EXPECT_THAT(backend.origins[&window], Eq(Point{0, 0}));
  window.show();

  const QImage image = window.grab().toImage();
  int run = 0;
  for (int i = 0; i < 900; ++i) {
    const bool onDash = i % 12 < 6;
    if (i == 108) continue;  // where they cross
    ASSERT_THAT(isDash(image, 480, i), Eq(onDash)) << i;
    ASSERT_THAT(isDash(image, 960, i), Eq(onDash)) << i;
    ASSERT_FALSE(isDash(image, 481, i)) << i;
    run += 3;
  }
  for (int i = 0; i < 1440; ++i) {
    if (i == 480 || i == 960) continue;
    ASSERT_THAT(isDash(image, i, 108), Eq(i % 12 < 6)) << i;
    ASSERT_FALSE(isDash(image, i, 388)) << i;  // none at the lower edge
    run += 2;
  }
  EXPECT_THAT(run, Eq(899 * 3 + 1438 * 2));
  EXPECT_THAT(image.pixelColor(480, 1).alpha(), Eq(qRound(0.6 * 255)));
}

TEST(GuidesWindow, IsNothingButItsDashesWithoutACompositor) {
  FakeWindowBackend backend;
  backend.composited = false;
  GuidesWindow window(backend, kHome, kScreen);
  EXPECT_TRUE(window.mask().contains(QPoint(480, 5)));
  EXPECT_FALSE(window.mask().contains(QPoint(480, 6)));
  EXPECT_TRUE(window.mask().contains(QPoint(3, 108)));
  EXPECT_FALSE(window.mask().contains(QPoint(700, 400)));
}

}  // namespace
}  // namespace horalo
