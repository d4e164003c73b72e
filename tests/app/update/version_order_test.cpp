#include "app/update/version_order.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace horalo {
namespace {

TEST(VersionOrder, isARowFromOldToNew) {
  const std::vector<std::string> fromOldToNew = {"0.9",
                                                 "1.0a1",
                                                 "1.0b1",
                                                 "1.0b2",
                                                 "1.0b10",
                                                 "1.0rc1",
                                                 "1.0",
                                                 "1.0.1",
                                                 "1.1",
                                                 "1.9",
                                                 "1.10",
                                                 "2.0-beta",
                                                 "2.0",
                                                 "2.0.0.1",
                                                 "2024.1",
                                                 "9223372036854775807",
                                                 "9223372036854775808",
                                                 "18446744073709551616",
                                                 std::string(90, '9')};
  for (std::size_t i = 0; i < fromOldToNew.size(); ++i) {
    for (std::size_t j = 0; j < fromOldToNew.size(); ++j) {
      EXPECT_EQ(compareVersions(fromOldToNew[i], fromOldToNew[j]), i <=> j)
          << fromOldToNew[i] << " and " << fromOldToNew[j];
    }
  }
}

TEST(VersionOrder, knowsTheSameVersionInOtherWords) {
  EXPECT_EQ(compareVersions("2", "2.0.0"), std::weak_ordering::equivalent);
  EXPECT_EQ(compareVersions("2.00", "2.0"), std::weak_ordering::equivalent);
  EXPECT_EQ(compareVersions("1.02", "1.2"), std::weak_ordering::equivalent);
  EXPECT_EQ(compareVersions("1.3+debian1", "1.3"), std::weak_ordering::equivalent);
  EXPECT_EQ(compareVersions("v1.0", "v1.0"), std::weak_ordering::equivalent);
  EXPECT_EQ(compareVersions("", ""), std::weak_ordering::equivalent);
}

TEST(VersionOrder, takesNothingOddForAVersion) {
  EXPECT_TRUE(isVersion("1.3.0"));
  EXPECT_TRUE(isVersion("2.0 beta 1"));
  EXPECT_TRUE(isVersion(std::string(100, '9')));
  for (const std::string& text :
       {std::string(), std::string("beta"), std::string(101, '9'), std::string(10'000, '9'),
        std::string("1.0\n"), std::string("1.0\0", 4), std::string("1.0\xc3\xa9")}) {
    EXPECT_FALSE(isVersion(text)) << text.substr(0, 20);
  }
}

TEST(VersionOrder, standsTenThousandDigits) {
  const std::string digits(10'000, '9');
  EXPECT_EQ(compareVersions(digits, "9"), std::weak_ordering::greater);
  EXPECT_EQ(compareVersions(digits, digits), std::weak_ordering::equivalent);
}

}  // namespace
}  // namespace horalo
