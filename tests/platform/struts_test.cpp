#include "platform/x11/struts.h"

#include <gtest/gtest.h>

#include <vector>

namespace horalo {
namespace {

using Edge = Strut::Edge;

// Two monitors side by side, tops aligned: 1440x900 and 1280x1024.
constexpr QSize xScreen(2720, 1024);
constexpr QRect first(0, 0, 1440, 900);
constexpr QRect second(1440, 0, 1280, 1024);

QRect usable(const std::vector<Strut>& struts, const QRect& monitor) {
  return areaWithout(struts, monitor, xScreen);
}

TEST(StrutsTest, WithoutPanelsAllOfAMonitorIsVisible) {
  EXPECT_EQ(usable({}, first), first);
  EXPECT_EQ(usable({}, second), second);
}

TEST(StrutsTest, APanelTakesFromItsOwnMonitorOnly) {
  const std::vector<Strut> top{{Edge::top, 28, 0, 1439}};
  EXPECT_EQ(usable(top, first), QRect(0, 28, 1440, 872));
  EXPECT_EQ(usable(top, second), second);

  const std::vector<Strut> bottom{{Edge::bottom, 40, 1440, 2719}};
  EXPECT_EQ(usable(bottom, first), first);
  EXPECT_EQ(usable(bottom, second), QRect(1440, 0, 1280, 984));
}

// The first monitor ends 124 pixels above the bottom of the X screen, from which its panel's strut
// counts.
TEST(StrutsTest, AStrutCountsFromTheEdgeOfTheWholeScreen) {
  const std::vector<Strut> bottom{{Edge::bottom, 124 + 30, 0, 1439}};
  EXPECT_EQ(usable(bottom, first), QRect(0, 0, 1440, 870));
  EXPECT_EQ(usable(bottom, second), second);
}

TEST(StrutsTest, SidesWorkLikeTopAndBottom) {
  EXPECT_EQ(usable({{Edge::left, 50, 0, 899}}, first), QRect(50, 0, 1390, 900));
  EXPECT_EQ(usable({{Edge::right, 60, 0, 1023}}, second), QRect(1440, 0, 1220, 1024));
}

// A panel at the left of the second monitor: its strut reaches from the edge of the X screen across
// the whole of the first.
TEST(StrutsTest, AStrutAcrossAWholeMonitorIsMeantForTheNext) {
  const std::vector<Strut> seam{{Edge::left, 1440 + 50, 0, 1023}};
  EXPECT_EQ(usable(seam, first), first);
  EXPECT_EQ(usable(seam, second), QRect(1490, 0, 1230, 1024));
}

TEST(StrutsTest, SeveralPanelsAddUp) {
  const std::vector<Strut> struts{
      {Edge::top, 28, 0, 1439}, {Edge::top, 20, 0, 1439}, {Edge::left, 64, 0, 899}};
  EXPECT_EQ(usable(struts, first), QRect(64, 28, 1376, 872));
}

TEST(StrutsTest, NonsenseLeavesTheMonitorAsItIs) {
  const std::vector<Strut> struts{{Edge::top, 600, 0, 1439}, {Edge::bottom, 124 + 600, 0, 1439}};
  EXPECT_EQ(usable(struts, first), first);
}

}  // namespace
}  // namespace horalo
