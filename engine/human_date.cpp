#include "engine/human_date.h"

#include <algorithm>

#include "base/ascii.h"
#include "engine/digits.h"

namespace horalo {
namespace {

constexpr std::array<std::string_view, 12> kMonths{"january",   "february", "march",    "april",
                                                   "may",       "june",     "july",     "august",
                                                   "september", "october",  "november", "december"};

constexpr bool startsWithName(std::string_view text, std::string_view name) {
  return text.size() >= name.size() &&
         std::equal(name.begin(), name.end(), text.begin(),
                    [](char expected, char c) { return lowered(c) == expected; });
}

// Takes a month's name off the front of `text`, its first three letters where `abbreviated`.
// 0 where there is none.
int takeMonthName(std::string_view& text, bool abbreviated) {
  for (std::size_t i = 0; i < kMonths.size(); ++i) {
    const std::string_view name = abbreviated ? kMonths[i].substr(0, 3) : kMonths[i];
    if (startsWithName(text, name)) {
      text.remove_prefix(name.size());
      return static_cast<int>(i) + 1;
    }
  }
  return 0;
}

// Reads `text` by one layout; false where it does not fit.
bool readByLayout(std::string_view text, std::string_view layout, CivilTime& time) {
  // Layouts without a name have texts of just their own length.
  const bool hasName = layout.find("MMM") != std::string_view::npos;
  if (!hasName && text.size() != layout.size()) return false;

  while (!layout.empty()) {
    const char letter = layout.front();
    const std::size_t width = std::min(layout.find_first_not_of(letter), layout.size());
    layout.remove_prefix(width);
    if (letter == 'M' && width >= 3) {
      time.date.month = takeMonthName(text, width == 3);
      if (time.date.month == 0) return false;
      continue;
    }
    if (text.size() < width) return false;
    if (letter == '-' || letter == '/' || letter == ':' || letter == ',' || letter == ' ') {
      if (text.front() != letter) return false;
      text.remove_prefix(1);
      continue;
    }
    const int value = fixedDigits(text, 0, width);
    if (value < 0) return false;
    text.remove_prefix(width);
    switch (letter) {
      case 'y':
        time.date.year = value;
        break;
      case 'M':
        time.date.month = value;
        break;
      case 'd':
        time.date.day = value;
        break;
      case 'H':
        time.hour = value;
        break;
      case 'm':
        time.minute = value;
        break;
      default:
        time.second = value;
        break;
    }
  }
  return text.empty();
}

bool isReal(const CivilTime& time) {
  const CivilDate& date = time.date;
  return date.year >= 1 && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
         date.day <= daysInMonth(date.year, date.month) && time.hour <= 23 && time.minute <= 59 &&
         time.second <= 59;
}

}  // namespace

std::optional<HumanDate> matchHumanDate(std::string_view text) {
  constexpr std::size_t kShortest = 10;
  constexpr std::size_t kLongest = std::string_view("September 30, 2024 23:59:59").size();
  if (text.size() < kShortest || text.size() > kLongest) return std::nullopt;
  for (const std::string_view format : kHumanDateFormats) {
    CivilTime time;
    if (readByLayout(text, format, time) && isReal(time)) return HumanDate{time, format};
  }
  return std::nullopt;
}

}  // namespace horalo
