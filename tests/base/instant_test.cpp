#include "base/instant.h"

#include <gtest/gtest.h>

#include "base/clock.h"

namespace horalo {
namespace {

struct Case {
  Instant instant;
  std::int64_t seconds, milliseconds;
};

TEST(Instant, IsTruncatedTowardZero) {
  constexpr Case kCases[]{
      {{0, 0}, 0, 0},
      {{0, 999'999'999}, 0, 999},
      {{1'704'067'200, 123'400'000}, 1'704'067'200, 1'704'067'200'123},
      {{-1, 500'000'000}, 0, -500},
      {{-1, 999'999'999}, 0, 0},
      {{-1, 999'000'001}, 0, 0},
      {{-1, 999'000'000}, 0, -1},
      {{-1, 1}, 0, -999},
      {{-1, 0}, -1, -1'000},
      {{-2, 999'999'999}, -1, -1'000},
      {{-2, 1}, -1, -1'999},
      {{kFarthestSecond, 0}, kFarthestSecond, kFarthestSecond * 1'000},
      {{-kFarthestSecond, 0}, -kFarthestSecond, -kFarthestSecond * 1'000},
  };
  int compared = 0;
  for (const Case& c : kCases) {
    EXPECT_EQ(unixSeconds(c.instant), c.seconds) << "case " << compared;
    EXPECT_EQ(unixMilliseconds(c.instant), c.milliseconds) << "case " << compared;
    ++compared;
  }
  EXPECT_EQ(compared, 13);
}

TEST(Instant, StaysInItsRange) {
  const Instant last{kFarthestSecond, 0}, first{-kFarthestSecond, 0};
  EXPECT_TRUE(isInRange(last));
  EXPECT_TRUE(isInRange(first));
  EXPECT_FALSE(isInRange({kFarthestSecond, 1}));
  EXPECT_FALSE(isInRange({-kFarthestSecond - 1, 999'999'999}));
  EXPECT_EQ(addSeconds(last, 0), last);
  EXPECT_EQ(addSeconds(last, 1), std::nullopt);
  EXPECT_EQ(addSeconds(first, -1), std::nullopt);
  EXPECT_EQ(addSeconds(first, 2 * kFarthestSecond), last);
  EXPECT_EQ(addSeconds({-1, 5}, 1), (Instant{0, 5}));
  for (const std::int64_t seconds : {INT64_MAX, INT64_MIN}) {
    EXPECT_EQ(addSeconds(last, seconds), std::nullopt);
    EXPECT_EQ(addSeconds(first, seconds), std::nullopt);
    EXPECT_EQ(addSeconds({0, 0}, seconds), std::nullopt);
  }
}

TEST(Instant, IsSoFarFromAnother) {
  EXPECT_DOUBLE_EQ(distanceInSeconds({10, 0}, {12, 500'000'000}), 2.5);
  EXPECT_DOUBLE_EQ(distanceInSeconds({12, 500'000'000}, {10, 0}), 2.5);
  EXPECT_NEAR(distanceInSeconds({-1, 999'999'999}, {0, 0}), 1e-9, 1e-15);
  EXPECT_DOUBLE_EQ(distanceInSeconds({kFarthestSecond, 0}, {-kFarthestSecond, 0}),
                   2.0 * static_cast<double>(kFarthestSecond));
}

TEST(Clock, OfTheSystemGoesForward) {
  const SystemClock clock;
  const Instant earlier = clock.now();
  EXPECT_GT(earlier.seconds, 1'700'000'000);
  EXPECT_GE(earlier.nanoseconds, 0);
  EXPECT_LT(earlier.nanoseconds, 1'000'000'000);
  while (clock.now() == earlier) {
  }
  EXPECT_GT(clock.now(), earlier);
}

}  // namespace
}  // namespace horalo
