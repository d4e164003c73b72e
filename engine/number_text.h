#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "base/instant.h"

namespace horalo {

// A text that is wholly a floating-point number as the C library's strtod reads it in the C locale:
//
//   1704067200   -1.5   .5   1.   1.704067200123e12   0x10   0x1.8p3   inf   nan(0)
//
// Its value as a floating-point number decides what it means; the instant is taken from what is
// written, because a 64-bit floating-point number of today's milliseconds has no room for their
// fraction.
class NumberText {
 public:
  // Nothing where `text` is no number or holds anything besides one. It must outlive the result.
  static std::optional<NumberText> parse(std::string_view text);

  // The nearest 64-bit floating-point value; infinite where the text is beyond its range.
  double value() const { return value_; }

  // The instant that lies so many seconds or milliseconds after the epoch, to the nearest
  // nanosecond; nothing where it is out of range (see isInRange).
  std::optional<Instant> asSeconds() const { return instant(0); }
  std::optional<Instant> asMilliseconds() const { return instant(-3); }

 private:
  // The digits, counted from the first that is written; 0 outside them.
  int digit(std::int64_t i) const;
  std::int64_t digitCount() const;
  std::int64_t firstSignificantDigit() const;
  // How many digits stand before the point once the zeros in front are gone.
  std::int64_t magnitude() const;

  std::optional<Instant> instant(int shift) const;
  std::optional<Instant> wholeInstant(int shift) const;
  std::optional<Instant> decimalInstant(int shift) const;
  std::optional<Instant> binaryInstant(int shift) const;

  double value_ = 0;
  bool negative_ = false;
  bool whole_ = false;    // the value is what is written, without a fraction
  bool decimal_ = false;  // the parts that follow are set:
  // the digits before and after the point, and the power of ten.
  std::string_view integer_;
  std::string_view fraction_;
  std::int64_t exponent_ = 0;
};

}  // namespace horalo
