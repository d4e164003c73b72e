#include "engine/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "base/ascii.h"
#include "engine/digits.h"
#include "engine/hexadecimal.h"

namespace horalo {
namespace {

constexpr std::int32_t kNanosecondsPerSecond = 1'000'000'000;
// Beyond this a power of ten decides alone between zero and infinity.
constexpr std::int64_t kLargestExponent = 1'000'000'000;

bool isWord(std::string_view text, std::string_view word) {
  return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                    [](char a, char b) { return lowered(a) == b; });
}

bool isNotANumber(std::string_view text) {
  if (text.size() < 3 || !isWord(text.substr(0, 3), "nan")) return false;
  std::string_view rest = text.substr(3);
  if (rest.empty()) return true;
  if (rest.size() < 2 || rest.front() != '(' || rest.back() != ')') return false;
  rest = rest.substr(1, rest.size() - 2);
  return std::all_of(rest.begin(), rest.end(),
                     [](char c) { return isDigit(c) || isLetter(c) || c == '_'; });
}

// The value of plain digits that fit the floating-point number exactly, the usual case by far.
std::optional<double> smallWholeNumber(std::string_view digits) {
  if (digits.size() > 15) return std::nullopt;
  std::int64_t value = 0;
  for (const char c : digits) {
    if (!isDigit(c)) return std::nullopt;
    value = value * 10 + (c - '0');
  }
  return static_cast<double>(value);
}

// The instant of a distance from the epoch given as seconds and nanoseconds, both not negative.
std::optional<Instant> instantOf(bool negative, std::int64_t seconds, std::int32_t nanoseconds) {
  if (nanoseconds == kNanosecondsPerSecond) {
    nanoseconds = 0;
    ++seconds;
  }
  Instant instant{seconds, nanoseconds};
  if (negative) {
    instant = nanoseconds == 0 ? Instant{-seconds, 0}
                               : Instant{-seconds - 1, kNanosecondsPerSecond - nanoseconds};
  }
  if (!isInRange(instant)) return std::nullopt;
  return instant;
}

}  // namespace

std::optional<NumberText> NumberText::parse(std::string_view text) {
  NumberText number;
  if (text.starts_with('-') || text.starts_with('+')) {
    number.negative_ = text.front() == '-';
    text.remove_prefix(1);
  }
  if (text.empty()) return std::nullopt;
  const double sign = number.negative_ ? -1.0 : 1.0;

  if (const std::optional<double> small = smallWholeNumber(text)) {
    number.whole_ = true;
    number.value_ = sign * *small;
    return number;
  }

  if (text.size() > 2 && text[0] == '0' && lowered(text[1]) == 'x') {
    const std::optional<double> value = parseHexadecimal(text.substr(2));
    if (!value) return std::nullopt;
    number.value_ = sign * *value;
    return number;
  }

  if (isWord(text, "inf") || isWord(text, "infinity")) {
    number.value_ = sign * std::numeric_limits<double>::infinity();
    return number;
  }
  if (isNotANumber(text)) {
    number.value_ = std::numeric_limits<double>::quiet_NaN();
    return number;
  }

  std::string_view rest = text;
  number.decimal_ = true;
  number.integer_ = takeDigits(rest);
  if (rest.starts_with('.')) {
    rest.remove_prefix(1);
    number.fraction_ = takeDigits(rest);
  }
  if (number.integer_.empty() && number.fraction_.empty()) return std::nullopt;
  if (!rest.empty()) {
    if (lowered(rest.front()) != 'e') return std::nullopt;
    rest.remove_prefix(1);
    const bool negativeExponent = rest.starts_with('-');
    if (negativeExponent || rest.starts_with('+')) rest.remove_prefix(1);
    const std::string_view digits = takeDigits(rest);
    if (digits.empty() || !rest.empty()) return std::nullopt;
    for (const char c : digits) {
      number.exponent_ = std::min(number.exponent_ * 10 + (c - '0'), kLargestExponent);
    }
    if (negativeExponent) number.exponent_ = -number.exponent_;
  }
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number.value_);
  if (error == std::errc::result_out_of_range) {
    number.value_ = number.magnitude() > 0 ? std::numeric_limits<double>::infinity() : 0.0;
  }
  number.value_ *= sign;
  return number;
}

int NumberText::digit(std::int64_t i) const {
  if (i < 0 || i >= digitCount()) return 0;
  const auto index = static_cast<std::size_t>(i);
  return (index < integer_.size() ? integer_[index] : fraction_[index - integer_.size()]) - '0';
}

std::int64_t NumberText::digitCount() const {
  return static_cast<std::int64_t>(integer_.size() + fraction_.size());
}

std::int64_t NumberText::firstSignificantDigit() const {
  std::int64_t first = 0;
  while (first < digitCount() && digit(first) == 0) ++first;
  return first;
}

std::int64_t NumberText::magnitude() const {
  return static_cast<std::int64_t>(integer_.size()) + exponent_ - firstSignificantDigit();
}

std::optional<Instant> NumberText::instant(int shift) const {
  // Far outside the range in either unit; what is nearer is decided exactly.
  if (!(std::abs(value_) < 1e18)) return std::nullopt;
  if (whole_) return wholeInstant(shift);
  return decimal_ ? decimalInstant(shift) : binaryInstant(shift);
}

std::optional<Instant> NumberText::wholeInstant(int shift) const {
  const auto distance = static_cast<std::int64_t>(std::abs(value_));
  if (shift == 0) return instantOf(negative_, distance, 0);
  const auto milliseconds = static_cast<std::int32_t>(distance % 1'000);
  return instantOf(negative_, distance / 1'000, milliseconds * 1'000'000);
}

// The digits d0 d1 d2 ... with the point behind `point` of them:
//
//   1640193507064.5 as milliseconds    1640193507|064500000|00...
//                                       seconds  |nanosec. |decides rounding
std::optional<Instant> NumberText::decimalInstant(int shift) const {
  const std::int64_t first = firstSignificantDigit();
  if (first == digitCount()) return Instant{};
  const std::int64_t point = static_cast<std::int64_t>(integer_.size()) + exponent_ + shift;
  if (point - first > 18) return std::nullopt;

  std::int64_t seconds = 0;
  for (std::int64_t i = first; i < point; ++i) seconds = seconds * 10 + digit(i);
  std::int32_t nanoseconds = 0;
  for (std::int64_t i = point; i < point + 9; ++i) nanoseconds = nanoseconds * 10 + digit(i);
  if (digit(point + 9) >= 5) ++nanoseconds;
  return instantOf(negative_, seconds, nanoseconds);
}

std::optional<Instant> NumberText::binaryInstant(int shift) const {
  const std::int64_t unitsPerSecond = shift == 0 ? 1 : 1'000;
  const std::int64_t nanosecondsPerUnit = kNanosecondsPerSecond / unitsPerSecond;
  const double magnitude = std::abs(value_);
  const auto whole = static_cast<std::int64_t>(magnitude);
  const double fraction = magnitude - static_cast<double>(whole);
  const std::int64_t nanoseconds = whole % unitsPerSecond * nanosecondsPerUnit +
                                   std::llround(fraction * static_cast<double>(nanosecondsPerUnit));
  return instantOf(negative_, whole / unitsPerSecond, static_cast<std::int32_t>(nanoseconds));
}

}  // namespace horalo
