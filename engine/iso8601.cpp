#include "engine/iso8601.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "engine/civil_time.h"
#include "engine/digits.h"

namespace horalo {
namespace {

constexpr std::size_t kDateSize = 10;      // yyyy-MM-dd
constexpr std::size_t kDateTimeSize = 19;  // yyyy-MM-ddTHH:mm:ss

std::optional<CivilDate> parseDate(std::string_view text) {
  if (text[4] != '-' || text[7] != '-') return std::nullopt;
  const int year = fixedDigits(text, 0, 4);
  const int month = fixedDigits(text, 5, 2);
  const int day = fixedDigits(text, 8, 2);
  if (year < 0 || month < 1 || month > 12 || day < 1 || day > daysInMonth(year, month)) {
    return std::nullopt;
  }
  return CivilDate{year, month, day};
}

// The offset in seconds of "Z" or "+hh:mm"; nothing for anything else.
std::optional<std::int32_t> parseZone(std::string_view text) {
  if (text == "Z") return 0;
  if (text.size() != 6 || (text[0] != '+' && text[0] != '-') || text[3] != ':') return std::nullopt;
  const int hours = fixedDigits(text, 1, 2);
  const int minutes = fixedDigits(text, 4, 2);
  if (hours < 0 || hours > 23 || minutes < 0 || minutes > 59) return std::nullopt;
  const std::int32_t seconds = hours * 3'600 + minutes * 60;
  return text[0] == '-' ? -seconds : seconds;
}

// Nanoseconds of the digits behind the point, 0 to 1'000'000'000.
std::int32_t parseFraction(std::string_view digits) {
  std::int32_t nanoseconds = 0;
  for (std::size_t i = 0; i < 9; ++i) {
    nanoseconds = nanoseconds * 10 + (i < digits.size() ? digits[i] - '0' : 0);
  }
  return nanoseconds + (digits.size() > 9 && digits[9] >= '5' ? 1 : 0);
}

char* writeTwoDigits(char* out, int value) {
  *out++ = static_cast<char>('0' + value / 10);
  *out++ = static_cast<char>('0' + value % 10);
  return out;
}

char* writeYear(char* out, std::int64_t year) {
  if (year < 0) {
    *out++ = '-';
    year = -year;
  }
  if (year > 9'999) return std::to_chars(out, out + 20, year).ptr;
  out = writeTwoDigits(out, static_cast<int>(year / 100));
  return writeTwoDigits(out, static_cast<int>(year % 100));
}

char* writeOffset(char* out, std::int32_t offset) {
  if (offset == 0) {
    *out++ = 'Z';
    return out;
  }
  *out++ = offset < 0 ? '-' : '+';
  const std::int32_t distance = offset < 0 ? -offset : offset;
  out = writeTwoDigits(out, distance / 3'600);
  *out++ = ':';
  out = writeTwoDigits(out, distance / 60 % 60);
  if (distance % 60 != 0) {
    *out++ = ':';
    out = writeTwoDigits(out, distance % 60);
  }
  return out;
}

}  // namespace

std::optional<Instant> parseISO8601(std::string_view text) {
  if (text.size() < kDateSize) return std::nullopt;
  const std::optional<CivilDate> date = parseDate(text);
  if (!date) return std::nullopt;
  if (text.size() == kDateSize) return Instant{civilSeconds({*date, 0, 0, 0}), 0};

  if (text.size() < kDateTimeSize || text[10] != 'T' || text[13] != ':' || text[16] != ':') {
    return std::nullopt;
  }
  const int hour = fixedDigits(text, 11, 2);
  const int minute = fixedDigits(text, 14, 2);
  const int second = fixedDigits(text, 17, 2);
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59) {
    return std::nullopt;
  }
  std::string_view rest = text.substr(kDateTimeSize);
  std::int32_t nanoseconds = 0;
  if (rest.starts_with('.')) {
    rest.remove_prefix(1);
    const std::size_t digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
    if (digits == 0) return std::nullopt;
    nanoseconds = parseFraction(rest.substr(0, digits));
    rest.remove_prefix(digits);
  }
  const std::optional<std::int32_t> offset = parseZone(rest);
  if (!offset) return std::nullopt;
  Instant instant{civilSeconds({*date, hour, minute, second}) - *offset, nanoseconds};
  if (nanoseconds == 1'000'000'000) instant = {instant.seconds + 1, 0};
  return instant;
}

void appendISO8601(std::string& text, Instant instant, std::int32_t offset) {
  const CivilTime local = civilTimeOf(instant.seconds + offset);
  std::array<char, 48> written{};
  char* out = writeYear(written.data(), local.date.year);
  *out++ = '-';
  out = writeTwoDigits(out, local.date.month);
  *out++ = '-';
  out = writeTwoDigits(out, local.date.day);
  *out++ = 'T';
  out = writeTwoDigits(out, local.hour);
  *out++ = ':';
  out = writeTwoDigits(out, local.minute);
  *out++ = ':';
  out = writeTwoDigits(out, local.second);
  out = writeOffset(out, offset);
  text.append(written.data(), out);
}

}  // namespace horalo
