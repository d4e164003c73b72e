#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/icu_peer.h"
#include "cli/result_json.h"
#include "engine/conversion_result.h"
#include "engine/timestamp_parser.h"

// Names are GROUP/CASE/WHO, where WHO is "horalo" or the peer; bench/run pairs them.

namespace horalo {
namespace {

struct Text {
  const char* name;
  std::string_view text;
};

// One text for each recogniser, and two that none of them understands.
constexpr std::array kTexts{
    Text{"now", "now"},
    Text{"keyword", "yesterday"},
    Text{"ago", "3 days ago"},
    Text{"weekday", "next wednesday"},
    Text{"offset", "now + 2h"},
    Text{"offset from a date", "2024-01-31 + 1 month"},
    Text{"seconds", "1704067200"},
    Text{"milliseconds", "1704067200000"},
    Text{"ISO 8601", "2024-01-01T02:00:00.123+02:00"},
    Text{"first layout", "2024-01-01 10:00:00"},
    Text{"month first", "01/31/2024 10:00:00"},
    Text{"day first", "31/01/2024"},
    Text{"month by name", "December 31, 2024"},
    Text{"last layout", "05 Jan 2024"},
    Text{"a miss", "hello, world"},
    Text{"a near miss", "2024-13-01 10:00:00"},
};

struct World {
  FixedClock clock{{1'704'067'200, 0}};
  FixedZone zone{*TimeZone::find("America/New_York")};
  LocaleTexts texts{"en_US"};
  TimestampParser parser{clock, zone};
  RowContext context{clock, zone, texts};
};

void parse(benchmark::State& state, const std::string& text) {
  const World world;
  for (auto _ : state) {
    auto result = world.parser.parse(text);
    benchmark::DoNotOptimize(result);
  }
}

void parseWithIcu(benchmark::State& state, std::string_view text) {
  const IcuLayouts layouts;
  const auto unicode = icu::UnicodeString::fromUTF8({text.data(), static_cast<int>(text.size())});
  for (auto _ : state) benchmark::DoNotOptimize(layouts.parse(unicode));
}

// Instants that differ, so that no answer can be kept from the turn before.
Instant nextInstant(Instant instant) {
  return {instant.seconds + 86'461, 0};
}

void rowsAsJson(benchmark::State& state) {
  const World world;
  Instant instant{1'704'067'200, 0};
  std::string json;
  for (auto _ : state) {
    instant = nextInstant(instant);
    json.clear();
    appendJson(json, "1704067200", {instant, source::UnixSeconds{}, world.zone.current()},
               world.context);
    benchmark::DoNotOptimize(json.data());
  }
}

void rowsWithIcu(benchmark::State& state) {
  const IcuPhrases phrases("en_US");
  Instant instant{1'704'067'200, 0};
  double days = 0;
  for (auto _ : state) {
    instant = nextInstant(instant);
    days += 1;
    const auto milliseconds = static_cast<double>(instant.seconds) * 1000;
    benchmark::DoNotOptimize(phrases.dateAndPhrase(milliseconds, days));
  }
}

// `piece` again and again, `length` bytes in all.
std::string repeated(std::string_view piece, std::size_t length) {
  std::string text;
  while (text.size() < length) text += piece;
  text.resize(length);
  return text;
}

// Texts that have tempted parsers into quadratic time, at any length.
struct Growing {
  const char* name;
  std::string (*make)(std::size_t length);
};
constexpr std::array kGrowing{
    Growing{"blanks", [](std::size_t n) { return repeated(" ", n); }},
    Growing{"digits", [](std::size_t n) { return repeated("7", n); }},
    Growing{"signs", [](std::size_t n) { return repeated("-", n); }},
    Growing{"signs and blanks", [](std::size_t n) { return repeated("- ", n); }},
    Growing{"counts", [](std::size_t n) { return repeated("1 + ", n - 5) + "1days"; }},
    Growing{"blanks in a sum", [](std::size_t n) { return "now" + repeated(" ", n - 6) + "+2h"; }},
    Growing{"blanks before ago",
            [](std::size_t n) { return "3" + repeated(" ", n - 8) + "day ago"; }},
};

// Texts of 100 characters that keep a recogniser busy to the end.
std::vector<std::pair<const char*, std::string>> hundreds() {
  const auto filled = [](const std::string& start, const char* filler, const std::string& end) {
    return start + repeated(filler, 100 - start.size() - end.size()) + end;
  };
  return {{"a fraction", filled("1704067200.", "3", "")},
          {"a hexadecimal number", filled("0x1.", "f", "p9")},
          {"a long exponent", filled("1e-", "9", "")},
          {"not a number", filled("nan(", "a", ")")},
          {"an ISO 8601 fraction", filled("2024-01-01T00:00:00.", "7", "Z")},
          {"a sum from a date", filled("2024-01-31 10:00:00", " ", "+ 1 month")},
          {"a sum from nothing", filled("", "x", " + 1 months")},
          {"letters", filled("", "a", "")},
          {"wide blanks", repeated("\u3000", 300)}};
}

void registerAll() {
  using benchmark::RegisterBenchmark;
  for (const Text& text : kTexts) {
    const std::string name = std::string("parse/") + text.name;
    RegisterBenchmark((name + "/horalo").c_str(), parse, std::string(text.text));
    RegisterBenchmark((name + "/icu").c_str(), parseWithIcu, text.text);
  }
  for (const Growing& growing : kGrowing) {
    for (const std::size_t length : {std::size_t{100}, std::size_t{20'000}}) {
      const std::string name = std::string("length/") + growing.name + '/' + std::to_string(length);
      RegisterBenchmark(name.c_str(), parse, growing.make(length));
    }
  }
  for (const auto& [name, text] : hundreds()) {
    RegisterBenchmark((std::string("hundred/") + name + "/horalo").c_str(), parse, text);
  }
  RegisterBenchmark("rows/five rows as JSON/horalo", rowsAsJson);
  RegisterBenchmark("rows/five rows as JSON/icu", rowsWithIcu);
}

}  // namespace
}  // namespace horalo

int main(int argc, char** argv) {
  horalo::registerAll();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
