#include "app/panel_placement.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace horalo {

void PrintTo(Point point, std::ostream* out) {
  *out << '(' << point.x << ", " << point.y << ')';
}

namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::Optional;

constexpr Rect kVisibleFrame{0, 0, 1000, 1000};
constexpr Point kHome{260, 550};
constexpr Point kGrip{300, 600};  // where the pointer takes hold

// A panel on a screen of 1000 x 1000, at home unless placed elsewhere.
struct Panel {
  explicit Panel(std::optional<Point> saved = std::nullopt)
      : origin(placement.place(kVisibleFrame, saved)) {}

  void press() {
    pointer = kGrip;
    placement.mouseDown(pointer, origin);
  }
  // Moves the pointer by so much; true where the panel moved.
  bool drag(double dx, double dy) {
    pointer = {pointer.x + dx, pointer.y + dy};
    const auto moved = placement.mouseDragged(pointer);
    if (moved) origin = *moved;
    return moved.has_value();
  }

  PanelPlacement placement;
  Point pointer;
  Point origin;
};

TEST(PanelPlacement, HomeIsCentredFiftyAboveTheMiddle) {
  struct Case {
    Rect visibleFrame;
    Point home;
  };
  const std::vector<Case> cases = {
      {{0, 0, 1440, 900}, {480, 500}},
      {{0, 25, 1440, 875}, {480, 512.5}},
      {{-1280, 100, 1280, 1024}, {-880, 662}},
      {{0, 0, 400, 200}, {-40, 150}},  // smaller than the panel
  };
  int run = 0;
  for (const Case& test : cases) {
    EXPECT_THAT(PanelPlacement::homeOrigin(test.visibleFrame), Eq(test.home));
    ++run;
  }
  EXPECT_THAT(run, Eq(4));
}

TEST(PanelPlacement, ASavedPositionIsUsedAsItStands) {
  PanelPlacement placement;
  EXPECT_THAT(placement.defaultFrame(), Eq(std::nullopt));
  EXPECT_THAT(placement.place(kVisibleFrame, Point{-9000, 77.5}), Eq(Point{-9000, 77.5}));
  EXPECT_THAT(placement.defaultFrame(), Optional(Eq(Rect{260, 550, 480, 280})));
  EXPECT_THAT(placement.place({0, 0, 2000, 1000}, std::nullopt), Eq(Point{760, 550}));
  EXPECT_THAT(placement.defaultFrame(), Optional(Eq(Rect{760, 550, 480, 280})));
}

TEST(PanelPlacement, HomeHoldsWithinEighteenOnBothAxes) {
  Panel panel;
  panel.press();
  EXPECT_FALSE(panel.drag(10, 17));
  EXPECT_FALSE(panel.drag(8, 1));  // 18 on both axes
  EXPECT_FALSE(panel.drag(-36, -36));
  EXPECT_FALSE(panel.placement.hasLeftDefaultZone());
}

TEST(PanelPlacement, LeavingHomeJumpsTheWholeWay) {
  Panel panel;
  panel.press();
  EXPECT_TRUE(panel.drag(19, 0));
  EXPECT_THAT(panel.origin, Eq(Point{kHome.x + 19, kHome.y}));
  EXPECT_TRUE(panel.placement.hasLeftDefaultZone());
}

TEST(PanelPlacement, OneAxisIsEnoughToLeave) {
  Panel panel;
  panel.press();
  EXPECT_TRUE(panel.drag(3, -18.5));
  EXPECT_THAT(panel.origin, Eq(Point{kHome.x + 3, kHome.y - 18.5}));
}

TEST(PanelPlacement, SnappingHomeNeedsLessThanEighteenOnBothAxes) {
  Panel panel(Point{kHome.x + 100, kHome.y + 100});
  panel.press();
  EXPECT_TRUE(panel.placement.hasLeftDefaultZone());
  EXPECT_TRUE(panel.drag(-82, -100));  // exactly 18 on one axis
  EXPECT_THAT(panel.origin, Eq(Point{kHome.x + 18, kHome.y}));
  EXPECT_TRUE(panel.drag(-1, 17));
  EXPECT_THAT(panel.origin, Eq(kHome));
  EXPECT_FALSE(panel.placement.hasLeftDefaultZone());
}

TEST(PanelPlacement, AfterASnapThePointerTravelsAfresh) {
  Panel panel(Point{kHome.x + 100, kHome.y});
  panel.press();
  ASSERT_TRUE(panel.drag(-90, 0));
  ASSERT_THAT(panel.origin, Eq(kHome));
  EXPECT_FALSE(panel.drag(18, 0));
  EXPECT_TRUE(panel.drag(1, 0));
  EXPECT_THAT(panel.origin, Eq(Point{kHome.x + 19, kHome.y}));
}

TEST(PanelPlacement, OnePixelOffCountsAsHomeWhenADragBegins) {
  Panel atHome(Point{kHome.x + 1, kHome.y - 1});
  atHome.press();
  EXPECT_FALSE(atHome.placement.hasLeftDefaultZone());
  EXPECT_FALSE(atHome.drag(17, -17));  // stays where it is, one pixel off

  Panel away(Point{kHome.x, kHome.y + 1.01});
  away.press();
  EXPECT_TRUE(away.placement.hasLeftDefaultZone());
  EXPECT_TRUE(away.drag(1, 0));  // and snaps with the first movement
  EXPECT_THAT(away.origin, Eq(kHome));
}

TEST(PanelPlacement, NothingMovesWithoutADrag) {
  Panel panel;
  EXPECT_FALSE(panel.drag(300, 0));  // no button was pressed
  panel.press();
  ASSERT_TRUE(panel.drag(100, 0));
  panel.placement.mouseUp();
  EXPECT_FALSE(panel.placement.hasLeftDefaultZone());
  EXPECT_FALSE(panel.drag(100, 0));
}

TEST(PanelPlacement, NothingMovesWithoutAHome) {
  PanelPlacement placement;
  placement.mouseDown(kGrip, kHome);
  EXPECT_THAT(placement.mouseDragged({900, 900}), Eq(std::nullopt));
}

TEST(GuideLines, FollowTheLeftRightAndUpperEdgeOfHome) {
  EXPECT_THAT(guideLines({100, 620, 480, 280}, {0, 0, 1200, 1000}),
              ElementsAre(GuideLine{{100, 0}, {100, 1000}}, GuideLine{{580, 0}, {580, 1000}},
                          GuideLine{{0, 100}, {1200, 100}}));
}

TEST(GuideLines, CountFromTheirOwnScreen) {
  EXPECT_THAT(guideLines({1800, 300, 480, 280}, {1440, -124, 1280, 1024}),
              ElementsAre(GuideLine{{360, 0}, {360, 1024}}, GuideLine{{840, 0}, {840, 1024}},
                          GuideLine{{0, 320}, {1280, 320}}));
}

}  // namespace
}  // namespace horalo
