#include "clipboard/toast_position.h"

#include <gtest/gtest.h>

namespace horalo {
namespace {

struct Row {
  ToastPosition position;
  std::string_view rawValue, displayName;
  Point origin;  // of a toast of 300 x 80 on a screen of 1440 x 900 with a panel of 25 below
};

constexpr Row kRows[] = {
    {ToastPosition::topLeft, "topLeft", "Top Left", {12, 808}},
    {ToastPosition::topCenter, "topCenter", "Top Center", {570, 808}},
    {ToastPosition::topRight, "topRight", "Top Right", {1128, 808}},
    {ToastPosition::bottomLeft, "bottomLeft", "Bottom Left", {12, 65}},
    {ToastPosition::bottomCenter, "bottomCenter", "Bottom Center", {570, 65}},
    {ToastPosition::bottomRight, "bottomRight", "Bottom Right", {1128, 65}},
};

TEST(ToastPosition, hasSixPlacesInOrder) {
  ASSERT_EQ(std::size(kRows), kToastPositions.size());
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    EXPECT_EQ(kToastPositions[i], kRows[i].position);
    EXPECT_EQ(rawValue(kRows[i].position), kRows[i].rawValue);
    EXPECT_EQ(displayName(kRows[i].position), kRows[i].displayName);
    EXPECT_EQ(toastPosition(kRows[i].rawValue), kRows[i].position);
    EXPECT_EQ(origin(kRows[i].position, {300, 80}, {0, 25, 1440, 875}), kRows[i].origin);
  }
}

TEST(ToastPosition, isBottomCenterForEveryOtherText) {
  int count = 0;
  for (const char* text : {"", "topleft", "Top Left", "bottomCenter ", "centre", "0"}) {
    EXPECT_EQ(toastPosition(text), ToastPosition::bottomCenter) << text;
    ++count;
  }
  EXPECT_EQ(count, 6);
}

TEST(ToastPosition, followsAScreenThatIsNotTheFirst) {
  const Rect second{1440, -124, 1280, 996};
  EXPECT_EQ(origin(ToastPosition::topRight, {300, 80}, second), (Point{2408, 780}));
  EXPECT_EQ(origin(ToastPosition::bottomLeft, {300, 80}, second), (Point{1452, -84}));
}

}  // namespace
}  // namespace horalo
