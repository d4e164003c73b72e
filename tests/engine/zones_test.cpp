#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "engine/date_math.h"
#include "engine/time_zone.h"

namespace horalo {
namespace {

using Cells = std::vector<std::string>;

Cells cellsOf(std::string_view line) {
  Cells cells;
  while (true) {
    const std::size_t tab = line.find('\t');
    cells.emplace_back(line.substr(0, tab));
    if (tab == std::string_view::npos) return cells;
    line.remove_prefix(tab + 1);
  }
}

// The lines that a Python program prints, as cells between tabs. Throws where it fails.
void readOracle(const std::string& script, const std::function<void(const Cells&)>& use) {
  std::FILE* const lines = popen(("exec /usr/bin/python3 -B " + script).c_str(), "r");
  if (lines == nullptr) throw std::runtime_error("cannot start Python");
  char* line = nullptr;
  std::size_t capacity = 0;
  for (ssize_t size = 0; (size = getline(&line, &capacity, lines)) > 0;) {
    use(cellsOf({line, static_cast<std::size_t>(size - 1)}));
  }
  std::free(line);
  if (pclose(lines) != 0) throw std::runtime_error(script + " failed");
}

const TimeZone& zoneOf(const std::string& identifier) {
  static std::map<std::string, TimeZone> zones;
  const auto known = zones.find(identifier);
  if (known != zones.end()) return known->second;
  const auto zone = TimeZone::find(identifier);
  if (!zone) throw std::runtime_error("no zone " + identifier);
  return zones.emplace(identifier, *zone).first->second;
}

CalendarUnit unitOf(const std::string& name) {
  static const std::map<std::string, CalendarUnit> units{
      {"year", CalendarUnit::year},    {"month", CalendarUnit::month},
      {"week", CalendarUnit::week},    {"day", CalendarUnit::day},
      {"hour", CalendarUnit::hour},    {"minute", CalendarUnit::minute},
      {"second", CalendarUnit::second}};
  return units.at(name);
}

Instant instantOf(const std::string& cell) {
  return {std::stoll(cell), 0};
}

Cells ourAnswer(const Cells& row) {
  const TimeZone& zone = zoneOf(row[1]);
  const std::string& question = row[0];
  const auto text = [](std::int64_t number) { return std::to_string(number); };
  if (question == "offset") {
    return {text(zone.offsetAt(instantOf(row[2]))), zone.abbreviationAt(instantOf(row[2]))};
  }
  const CivilTime local = civilTimeOf(std::stoll(row[2]));
  if (question == "local") {
    const ZonedTime found = zone.zonedTime(local);
    return {text(found.before), text(found.after)};
  }
  if (question == "midnight") return {text(zone.startOfDay(local.date))};
  if (question == "sum") {
    const auto sum = addUnits(instantOf(row[2]), std::stoll(row[3]), unitOf(row[4]), zone);
    return {sum ? text(sum->seconds) : "nothing"};
  }
  const auto found = calendarDifference(instantOf(row[2]), instantOf(row[3]), zone);
  const bool rightUnit = found.unit == unitOf(row[5]);
  return {text(found.count), rightUnit ? row[5] : "another unit"};
}

// Where a row's answer begins.
std::size_t answerOf(const std::string& question) {
  static const std::map<std::string, std::size_t> places{
      {"offset", 3}, {"local", 3}, {"midnight", 3}, {"sum", 5}, {"difference", 4}};
  return places.at(question);
}

TEST(Zones, AreReadAsAnotherReaderOfTheSystemsFilesDoes) {
  std::map<std::string, int> answered;
  std::map<std::string, bool> zones;
  int rows = 0, announced = -1, differences = 0;
  readOracle("'" HORALO_ORACLES "/zone_answers.py' 20261120", [&](const Cells& row) {
    if (row[0] == "rows") {
      announced = std::stoi(row[1]);
      return;
    }
    ++rows;
    ++answered[row[0]];
    zones[row[1]] = true;
    const Cells expected(row.begin() + static_cast<std::ptrdiff_t>(answerOf(row[0])), row.end());
    const Cells got = ourAnswer(row);
    if (got == expected || ++differences > 20) return;
    ADD_FAILURE() << testing::PrintToString(row) << ", got " << testing::PrintToString(got);
  });
  EXPECT_EQ(differences, 0);
  EXPECT_EQ(rows, announced);
  EXPECT_GT(zones.size(), 550U);
  for (const char* question : {"offset", "local", "midnight", "sum", "difference"}) {
    EXPECT_GT(answered[question], 25'000) << question;
  }
}

}  // namespace
}  // namespace horalo
