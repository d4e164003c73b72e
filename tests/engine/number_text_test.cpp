#include "engine/number_text.h"

#include <gtest/gtest.h>
#include <locale.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>

namespace horalo {
namespace {

// What the C library's strtod makes of a text in the C locale; nothing where it does not read it
// all, or only after skipping white space.
class StrtodInCLocale {
 public:
  std::optional<double> operator()(const std::string& text) const {
    if (text.empty() || std::isspace(static_cast<unsigned char>(text.front())) != 0) {
      return std::nullopt;
    }
    char* end = nullptr;
    const double value = strtod_l(text.c_str(), &end, locale_);
    if (end != text.c_str() + text.size()) return std::nullopt;
    return value;
  }

 private:
  locale_t locale_ = newlocale(LC_ALL_MASK, "C", nullptr);
};

bool isSameValue(double a, double b) {
  if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

// Texts that are nearly always a number or nearly one.
class NumberTexts {
 public:
  std::string next() {
    std::string text = oneOf({"", "", "", "", "-", "+", "--", "+-", " "});
    switch (below(8)) {
      case 0:
        text += oneOf({"inf", "INF", "Infinity", "infinit", "nan", "NaN", "nan(", "nan()",
                       "nan(12_aZ)", "nan(-)", "nan(1"});
        break;
      case 1:
      case 2:
        text += oneOf({"0x", "0X"}) + mantissa("0123456789abcdefABCDEF") + exponent("pP");
        break;
      default:
        text += mantissa("0123456789") + exponent("eE");
    }
    if (below(40) == 0) text.insert(below(text.size() + 1), 1, kOddities[below(kOddities.size())]);
    return text;
  }

 private:
  static constexpr std::string_view kOddities{"\0 .,_eExXpP+-0aZ\n\xFF", 19};

  std::size_t below(std::size_t limit) { return random_() % limit; }

  std::string oneOf(std::initializer_list<const char*> choices) {
    return *(choices.begin() + below(choices.size()));
  }

  std::string digits(std::string_view alphabet) {
    const std::size_t count = below(50) == 0 ? below(500) : below(14);
    const bool zeros = below(4) == 0;
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += zeros ? '0' : alphabet[below(alphabet.size())];
    return text;
  }

  std::string mantissa(std::string_view alphabet) {
    std::string text = digits(alphabet);
    if (below(2) == 0) text += '.' + digits(alphabet);
    return text;
  }

  std::string exponent(std::string_view letters) {
    if (below(2) == 0) return {};
    std::string text(1, letters[below(letters.size())]);
    text += oneOf({"", "-", "+", "-0", "+00"});
    constexpr std::array<std::size_t, 5> kLimits{30, 400, 1'200, 5'000, 0};
    const std::size_t limit = kLimits[below(kLimits.size())];
    return text + (limit == 0 ? digits("0123456789") : std::to_string(below(limit)));
  }

  std::mt19937 random_{20240101};
};

TEST(NumberText, AgreesWithStrtodOnEveryText) {
  constexpr int kTexts = 400'000;
  const StrtodInCLocale strtodInCLocale;
  NumberTexts texts;
  int numbers = 0, infinite = 0, zeros = 0, differences = 0;
  for (int i = 0; i < kTexts && differences < 10; ++i) {
    const std::string text = texts.next();
    const std::optional<double> expected = strtodInCLocale(text);
    const std::optional<NumberText> number = NumberText::parse(text);
    if (number.has_value() != expected.has_value() ||
        (expected && !isSameValue(number->value(), *expected))) {
      ++differences;
      ADD_FAILURE() << "\"" << text << "\": expected "
                    << (expected ? std::to_string(*expected) : "no number") << ", got "
                    << (number ? std::to_string(number->value()) : "no number");
    }
    if (!expected) continue;
    ++numbers;
    if (std::isinf(*expected)) ++infinite;
    if (*expected == 0) ++zeros;
  }
  EXPECT_GT(numbers, kTexts / 2);
  EXPECT_LT(numbers, kTexts * 9 / 10);
  EXPECT_GT(infinite, 10'000);
  EXPECT_GT(zeros, 10'000);
}

// The same number of nanoseconds written in many ways: the point moved, zeros added, an exponent to
// make up for it.
std::string spelled(bool negative, std::uint64_t nanoseconds, int pointFromRight,
                    std::mt19937& random) {
  std::string digits = std::to_string(nanoseconds);
  const int zerosBehind = static_cast<int>(random() % 4) * static_cast<int>(random() % 200);
  digits.append(static_cast<std::size_t>(zerosBehind), '0');
  int point = static_cast<int>(digits.size()) - zerosBehind - pointFromRight;
  const int shift = static_cast<int>(random() % 41) - 20;
  point += shift;
  if (point < 0) {
    digits.insert(0, static_cast<std::size_t>(-point), '0');
    point = 0;
  }
  if (point > static_cast<int>(digits.size())) {
    digits.append(static_cast<std::size_t>(point) - digits.size(), '0');
  }
  digits.insert(static_cast<std::size_t>(point), 1, '.');
  return (negative ? "-" : "") + digits + "e" + std::to_string(-shift);
}

TEST(NumberText, GivesTheInstantThatIsWrittenHoweverItIsSpelled) {
  constexpr int kTexts = 200'000;
  std::mt19937 random(1704067200);
  std::mt19937_64 wide(1704067200);
  for (int i = 0; i < kTexts; ++i) {
    const auto nanoseconds = wide() >> (1 + random() % 50);
    const bool negative = random() % 2 == 0;
    const auto billion = std::uint64_t{1'000'000'000};
    auto seconds = static_cast<std::int64_t>(nanoseconds / billion);
    auto rest = static_cast<std::int32_t>(nanoseconds % billion);
    if (negative) {
      seconds = -seconds;
      if (rest > 0) {
        --seconds;
        rest = 1'000'000'000 - rest;
      }
    }
    const Instant expected{seconds, rest};
    const std::string asSeconds = spelled(negative, nanoseconds, 9, random);
    const std::string asMilliseconds = spelled(negative, nanoseconds, 6, random);
    const auto number = NumberText::parse(asSeconds);
    ASSERT_TRUE(number) << asSeconds;
    ASSERT_EQ(number->asSeconds(), expected) << asSeconds;
    const auto other = NumberText::parse(asMilliseconds);
    ASSERT_TRUE(other) << asMilliseconds;
    ASSERT_EQ(other->asMilliseconds(), expected) << asMilliseconds;
  }
}

TEST(NumberText, RoundsToTheNearestNanosecond) {
  const auto nanoseconds = [](const char* text) { return NumberText::parse(text)->asSeconds(); };
  EXPECT_EQ(nanoseconds("0.00000000049999"), (Instant{0, 0}));
  EXPECT_EQ(nanoseconds("0.0000000005"), (Instant{0, 1}));
  EXPECT_EQ(nanoseconds("0.9999999995"), (Instant{1, 0}));
  EXPECT_EQ(nanoseconds("-0.9999999995"), (Instant{-1, 0}));
  EXPECT_EQ(nanoseconds("-0.0000000005"), (Instant{-1, 999'999'999}));
  EXPECT_EQ(nanoseconds("0x.8"), (Instant{0, 500'000'000}));
  EXPECT_EQ(nanoseconds("-0x1.8"), (Instant{-2, 500'000'000}));
  EXPECT_EQ(NumberText::parse("0x18CC251F400.8")->asMilliseconds(),
            (Instant{1'704'067'200, 500'000}));
  EXPECT_EQ(NumberText::parse("0x1.fffffffffffffp-1")->asSeconds(), (Instant{1, 0}));
  EXPECT_EQ(NumberText::parse("0x1.fffffffffffffp-1")->asMilliseconds(), (Instant{0, 1'000'000}));
}

TEST(NumberText, HasNoInstantOutOfRange) {
  for (const char* text : {"inf", "-inf", "nan", "1e300", "-1e300", "183882168921601",
                           "-183882168921601", "183882168921600.000000001", "0x1p60"}) {
    EXPECT_EQ(NumberText::parse(text)->asSeconds(), std::nullopt) << text;
  }
  EXPECT_EQ(NumberText::parse("183882168921600")->asSeconds(), (Instant{kFarthestSecond, 0}));
  EXPECT_EQ(NumberText::parse("-183882168921600")->asSeconds(), (Instant{-kFarthestSecond, 0}));
  EXPECT_EQ(NumberText::parse("183882168921600000")->asMilliseconds(),
            (Instant{kFarthestSecond, 0}));
  EXPECT_EQ(NumberText::parse("183882168921600000.0000004")->asMilliseconds(),
            (Instant{kFarthestSecond, 0}));
  EXPECT_EQ(NumberText::parse("183882168921600000.000001")->asMilliseconds(), std::nullopt);
}

}  // namespace
}  // namespace horalo
