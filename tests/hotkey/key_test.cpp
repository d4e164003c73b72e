#include "hotkey/key.h"

#include <gtest/gtest.h>

#include <QString>
#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/hotkey/key_rows.h"

namespace horalo {
namespace {

TEST(KeyTest, thereAre114InTheirOrder) {
  ASSERT_EQ(std::size(kKeyRows), 114U);
  ASSERT_EQ(Key::all().size(), 114U);
  std::set<std::uint32_t> codes;
  for (std::size_t index = 0; index < std::size(kKeyRows); ++index) {
    const KeyRow& row = kKeyRows[index];
    SCOPED_TRACE(row.name);
    EXPECT_TRUE(Key::all()[index] == row.key);
    EXPECT_EQ(row.key.carbonKeyCode(), row.code);
    EXPECT_EQ(row.key.description(), row.text);
    const auto back = Key::fromCarbonKeyCode(row.code);
    ASSERT_TRUE(back);
    EXPECT_TRUE(*back == row.key);
    codes.insert(row.code);
  }
  EXPECT_EQ(codes.size(), 114U);
}

TEST(KeyTest, noOtherCodeHasAKey) {
  std::set<std::uint32_t> known;
  for (const KeyRow& row : kKeyRows) known.insert(row.code);
  int without = 0;
  for (std::uint32_t code = 0; code < 1000; ++code) {
    if (known.count(code) == 0) {
      EXPECT_FALSE(Key::fromCarbonKeyCode(code)) << code;
      ++without;
    }
  }
  EXPECT_EQ(without, 1000 - 114);
  for (const std::uint32_t code :
       {52U, 66U, 68U, 70U, 77U, 93U, 94U, 95U, 102U, 104U, 108U, 110U, 112U, 127U, 0xFFFFFFFFU}) {
    EXPECT_FALSE(Key::fromCarbonKeyCode(code)) << code;
  }
}

// The names that are accepted besides the rule, and the keys that the rule does not hold for.
const std::map<std::string_view, std::vector<std::string_view>> kOtherSpellings = {
    {"return", {"return", "\r", "\u21A9\uFE0E", "\u23CE", "\u2B90"}},
    {"tab", {"tab", "\t", "\u21E5"}},
    {"space", {"space", " ", "\u2423"}},
    {"command", {"command", "\u2318", "\uF8FF"}},
    {"function", {"function", "fn"}},
    {"grave", {"grave", "`", "\u02CB", "\uFF40"}},
    {"rightBracket", {"]"}},
    {"leftBracket", {"["}},
    {"section", {"\u00A7"}},
    {"keypadClear", {"keypadclear", "\u2327"}},
};

std::vector<std::string> acceptedSpellings(const KeyRow& row) {
  std::string name(row.name);
  std::transform(name.begin(), name.end(), name.begin(),
                 [](char letter) { return static_cast<char>(std::tolower(letter)); });
  if (const auto other = kOtherSpellings.find(row.name); other != kOtherSpellings.end()) {
    return {other->second.begin(), other->second.end()};
  }
  const bool isFunctionKey = row.text.size() > 3 && row.text[3] == 'F';
  const bool byNameOnly =
      isFunctionKey || row.name.starts_with("keypad") || row.name.starts_with("right");
  if (byNameOnly && row.name != "rightArrow") return {name};
  return {name, std::string(row.text)};
}

TEST(KeyTest, readsEverySpellingInAnyCapitals) {
  int spellings = 0;
  for (const KeyRow& row : kKeyRows) {
    for (const std::string& spelling : acceptedSpellings(row)) {
      SCOPED_TRACE(spelling);
      const std::string upper = QString::fromStdString(spelling).toUpper().toStdString();
      for (const std::string& text : {spelling, upper}) {
        const auto key = Key::fromString(text);
        ASSERT_TRUE(key);
        EXPECT_EQ(key->carbonKeyCode(), row.code);
      }
      ++spellings;
    }
  }
  EXPECT_EQ(spellings, 192);
}

TEST(KeyTest, spellingsThatNameNothing) {
  std::vector<std::string> texts = {"",
                                    "rightBracket",
                                    "rightbracket",
                                    "RIGHTBRACKET",
                                    "leftBracket",
                                    "leftbracket",
                                    "LeftBracket",
                                    "section",
                                    "aa",
                                    " a",
                                    "a ",
                                    "10",
                                    "+",
                                    "'",
                                    "apostrophe",
                                    "\u21A9",
                                    "enter",
                                    "\n",
                                    "backspace",
                                    "esc",
                                    "pgup",
                                    "keypad",
                                    "keypad10",
                                    "f0",
                                    "f21",
                                    "\u2315",
                                    "cmd",
                                    "ctrl",
                                    "alt",
                                    "\U0001D5D1",
                                    "capslock ",
                                    "right command",
                                    "\xFF",
                                    std::string(1, '\0'),
                                    std::string("a\0", 2)};
  for (int number = 1; number <= 20; ++number) {
    texts.push_back((number < 10 ? "\uF860" : "\uF861") + std::string("F") +
                    std::to_string(number));
    texts.push_back((number < 10 ? "\uF860" : "\uF861") + std::string("f") +
                    std::to_string(number));
  }
  for (const std::string& text : texts) {
    EXPECT_FALSE(Key::fromString(text)) << testing::PrintToString(text);
  }
  EXPECT_EQ(texts.size(), 75U);
}

TEST(KeyTest, eightAreModifiers) {
  std::set<std::uint32_t> codes;
  for (const Key key : Key::all()) {
    if (key.isModifier()) codes.insert(key.carbonKeyCode());
  }
  EXPECT_EQ(codes, (std::set<std::uint32_t>{54, 55, 56, 58, 59, 60, 61, 62}));
}

TEST(KeyTest, twinsAreReadAsTheMainKey) {
  EXPECT_TRUE(Key::fromString("1") == Key(Key::one));
  EXPECT_TRUE(Key::fromString("keypad1") == Key(Key::keypad1));
  EXPECT_TRUE(Key::fromString(".") == Key(Key::period));
  EXPECT_TRUE(Key::fromString("\u21A9\uFE0E") == Key(Key::return_));
  EXPECT_TRUE(Key::fromString("\u2318") == Key(Key::command));
  EXPECT_TRUE(Key::fromString("]") == Key(Key::rightBracket));
}

}  // namespace
}  // namespace horalo
