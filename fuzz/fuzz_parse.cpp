#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "base/utf8.h"
#include "engine/conversion_result.h"
#include "engine/text_matching.h"
#include "engine/timestamp_parser.h"
#include "engine/user_locale.h"
#include "fuzz/plain_matchers.h"
#include "fuzz/require.h"

// Any text: what is understood makes five sound rows, and the rows are understood again.

namespace horalo {
namespace {

constexpr std::size_t kPlainMatchersReach = 64;  // std::regex recurses: longer texts cost it dearly
constexpr std::int64_t kLargestSeconds = 32'503'680'000;
constexpr std::int64_t kLargestMilliseconds = 253'402'300'799'999;

std::size_t hashOf(std::string_view text) {
  return std::hash<std::string_view>{}(text);
}

// The world in which a text is read follows from the text, so that the corpus is plain text.
const TimeZone& zoneFor(std::string_view text) {
  static const std::array zones{TimeZone::utc(),
                                *TimeZone::find("America/New_York"),
                                *TimeZone::find("Australia/Lord_Howe"),
                                *TimeZone::find("Asia/Kathmandu"),
                                *TimeZone::find("America/Sao_Paulo"),
                                *TimeZone::find("Pacific/Apia"),
                                *TimeZone::fromPosixRule("CET-1CEST,M3.5.0,M10.5.0/3")};
  return zones[hashOf(text) % zones.size()];
}

Instant nowFor(std::string_view text) {
  constexpr std::array<Instant, 5> kMoments{{{1'704'067'200, 0},
                                             {1'709'209'800, 500'000'000},
                                             {-1, 999'999'999},
                                             {4'102'444'799, 1},
                                             {1'730'613'600, 0}}};
  return kMoments[hashOf(text) / 7 % kMoments.size()];
}

const LocaleTexts& textsFor(std::string_view text) {
  static const LocaleTexts english("en_US");
  static const LocaleTexts persian("fa_IR");
  return hashOf(text) % 16 == 0 ? persian : english;
}

class Reader {
 public:
  explicit Reader(std::string_view text)
      : clock_(nowFor(text)), zone_(zoneFor(text)), context_{clock_, zone_, textsFor(text)} {}

  std::optional<ParseResult> parse(std::string_view text) const { return parser_.parse(text); }

  std::string row(RowKind kind, const ParseResult& parsed, const TimeZone& zone) const {
    std::string value;
    appendRowValue(value, kind, {parsed.date, parsed.source, zone}, context_);
    return value;
  }

  void checkRows(const ParseResult& parsed) const {
    const TimeZone zone = zone_.current();
    const auto all = rows({parsed.date, parsed.source, zone}, context_);
    for (std::size_t i = 0; i < all.size(); ++i) {
      const RowKind kind{static_cast<int>(i)};
      require(!all[i].value.empty() && isValidUtf8(all[i].value), "a row has a text");
      require(all[i].value == row(kind, parsed, zone), "a row is the same alone");
      require(all[i].label == rowLabel(kind), "a row is called what it is called alone");
    }
    require(!description(parsed.source).empty(), "what was detected has a name");
  }

  void checkRoundTrips(const ParseResult& parsed) const {
    const std::int64_t seconds = unixSeconds(parsed.date);
    const std::int64_t milliseconds = unixMilliseconds(parsed.date);
    if (parsed.date >= Instant{} && seconds <= kLargestSeconds) {
      const auto again = parse(row(RowKind::unixSeconds, parsed, TimeZone::utc()));
      require(again && again->date == Instant{seconds, 0}, "the seconds come back");
    }
    if (milliseconds > kLargestSeconds && milliseconds <= kLargestMilliseconds) {
      const auto again = parse(row(RowKind::unixMilliseconds, parsed, TimeZone::utc()));
      require(again && unixMilliseconds(again->date) == milliseconds, "the milliseconds come back");
    }
    for (const TimeZone& zone : {TimeZone::utc(), zone_.current()}) {
      const std::int64_t year = zone.localTime(parsed.date).date.year;
      if (year < 0 || year > 9999 || zone.offsetAt(parsed.date) % 60 != 0) continue;
      const auto again = parse(row(RowKind::iso8601, parsed, zone));
      require(again && again->date == Instant{parsed.date.seconds, 0}, "ISO 8601 comes back");
    }
  }

 private:
  FixedClock clock_;
  FixedZone zone_;
  TimestampParser parser_{clock_, zone_};
  RowContext context_;
};

bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c > 0; });
}

void check(const std::string& text) {
  const Reader reader(text);
  const std::optional<ParseResult> parsed = reader.parse(text);
  const std::optional<ParseResult> padded = reader.parse(" \t" + text + "\n");
  require(parsed.has_value() == padded.has_value(), "blanks around a text do not matter");
  if (parsed) {
    require(isInRange(parsed->date), "an instant is in range");
    require(parsed->date == padded->date && parsed->source == padded->source,
            "blanks around a text change nothing");
    reader.checkRows(*parsed);
    reader.checkRoundTrips(*parsed);
  }
  if (isAscii(text)) {
    compareWithStrtod(text);
    const std::string_view inner = trimmed(text);
    if (inner.size() <= kPlainMatchersReach) compareWithRegularExpressions(std::string(inner));
  }
  localeOfPosixName(text);
  require(isValidUtf8(toValidUtf8(text)), "repaired text is UTF-8");
}

}  // namespace
}  // namespace horalo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  horalo::check(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
