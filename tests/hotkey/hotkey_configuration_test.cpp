#include "hotkey/hotkey_configuration.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace horalo {
namespace {

struct NameRow {
  std::uint32_t code;
  std::string_view name;
};

// clang-format off
constexpr NameRow kNames[] = {
    {0, "A"}, {11, "B"}, {8, "C"}, {2, "D"}, {14, "E"}, {3, "F"},
    {5, "G"}, {4, "H"}, {34, "I"}, {38, "J"}, {40, "K"}, {37, "L"},
    {46, "M"}, {45, "N"}, {31, "O"}, {35, "P"}, {12, "Q"}, {15, "R"},
    {1, "S"}, {17, "T"}, {32, "U"}, {9, "V"}, {13, "W"}, {7, "X"},
    {16, "Y"}, {6, "Z"}, {29, "0"}, {18, "1"}, {19, "2"}, {20, "3"},
    {21, "4"}, {23, "5"}, {22, "6"}, {26, "7"}, {28, "8"}, {25, "9"},
    {50, "`"}, {27, "-"}, {24, "="}, {33, "["}, {30, "]"}, {42, "\\"},
    {41, ";"}, {39, "'"}, {43, ","}, {47, "."}, {44, "/"}, {49, "Space"},
    {36, "\u21B5"}, {48, "\u21E5"}, {51, "\u232B"}, {53, "\u238B"}, {122, "F1"}, {120, "F2"},
    {99, "F3"}, {118, "F4"}, {96, "F5"}, {97, "F6"}, {98, "F7"}, {100, "F8"},
    {101, "F9"}, {109, "F10"}, {103, "F11"}, {111, "F12"}, {123, "\u2190"}, {124, "\u2192"},
    {126, "\u2191"}, {125, "\u2193"},
};
// clang-format on

TEST(HotkeyConfigurationTest, names68Keys) {
  ASSERT_EQ(std::size(kNames), 68U);
  int named = 0;
  for (std::uint32_t code = 0; code < 1000; ++code) named += keyCodeToString(code) ? 1 : 0;
  EXPECT_EQ(named, 68);
  for (const NameRow& row : kNames) {
    const auto name = keyCodeToString(row.code);
    ASSERT_TRUE(name) << row.code;
    EXPECT_EQ(*name, row.name);
    const HotkeyConfiguration configuration{row.code, 0x100000};
    EXPECT_EQ(configuration.displayString(), "\u2318" + std::string(row.name));
  }
}

TEST(HotkeyConfigurationTest, showsItself) {
  EXPECT_EQ(HotkeyConfiguration{}.displayString(), "\u21E7\u2318E");
  EXPECT_EQ((HotkeyConfiguration{49, 0x1E0000}.displayString()), "\u2303\u2325\u21E7\u2318Space");
  EXPECT_EQ((HotkeyConfiguration{14, 0x110000}.displayString()), "\u2318E") << "with Caps Lock";
  EXPECT_EQ((HotkeyConfiguration{76, 0x100000}.displayString()), "\u2318") << "keypad Enter";
  EXPECT_EQ((HotkeyConfiguration{105, 0}.displayString()), "");
  EXPECT_EQ((HotkeyConfiguration{52, 0xFFFFFFFF}.displayString()), "\u2303\u2325\u21E7\u2318");
}

TEST(HotkeyConfigurationTest, theDefaultIsShiftCommandE) {
  EXPECT_EQ(HotkeyConfiguration{}.keyCode, 14U);
  EXPECT_EQ(HotkeyConfiguration{}.modifiers, 0x120000U);
  EXPECT_EQ(HotkeyConfiguration{}.toJson(), R"({"keyCode":14,"modifiers":1179648})");
}

TEST(HotkeyConfigurationTest, jsonAndBack) {
  for (const HotkeyConfiguration& configuration :
       {HotkeyConfiguration{}, HotkeyConfiguration{0, 0}, HotkeyConfiguration{40, 0x1E0000},
        HotkeyConfiguration{0xFFFFFFFF, 0xFFFFFFFF}}) {
    const auto back = HotkeyConfiguration::fromJson(configuration.toJson());
    ASSERT_TRUE(back) << configuration.toJson();
    EXPECT_EQ(*back, configuration);
  }
}

TEST(HotkeyConfigurationTest, jsonInOtherHandsIsRead) {
  const HotkeyConfiguration expected{40, 0x1E0000};
  int read = 0;
  for (const char* json : {
           R"({"modifiers":1966080,"keyCode":40})",
           "  {\n\t\"keyCode\" : 40 ,\r\n \"modifiers\" : 1966080 }\n",
           R"({"keyCode":40,"modifiers":1966080,"version":[1,{"a":null}]})",
           R"({"keyCode":40.0,"modifiers":1.96608e6})",
           R"({"\u006beyCode":40,"modifiers":1966080})",
       }) {
    const auto configuration = HotkeyConfiguration::fromJson(json);
    ASSERT_TRUE(configuration) << json;
    EXPECT_EQ(*configuration, expected) << json;
    ++read;
  }
  EXPECT_EQ(read, 5);
}

TEST(HotkeyConfigurationTest, brokenJsonIsNone) {
  int refused = 0;
  for (const std::string json : {
           R"()",
           R"(null)",
           R"(14)",
           R"("text")",
           R"([14,1179648])",
           R"({})",
           R"({"keyCode":14})",
           R"({"modifiers":1179648})",
           R"({"keycode":14,"modifiers":1179648})",
           R"({"keyCode":-1,"modifiers":1179648})",
           R"({"keyCode":14,"modifiers":-1179648})",
           R"({"keyCode":4294967296,"modifiers":1179648})",
           R"({"keyCode":14,"modifiers":4294967296})",
           R"({"keyCode":1e300,"modifiers":1179648})",
           R"({"keyCode":1e400,"modifiers":1179648})",
           R"({"keyCode":14.5,"modifiers":1179648})",
           R"({"keyCode":"14","modifiers":1179648})",
           R"({"keyCode":true,"modifiers":1179648})",
           R"({"keyCode":null,"modifiers":1179648})",
           R"({"keyCode":[14],"modifiers":1179648})",
           R"({"keyCode":NaN,"modifiers":1179648})",
           R"({"keyCode":0x0e,"modifiers":1179648})",
           R"({"keyCode":14,"modifiers":1179648)",
           R"({"keyCode":14,"modifiers":1179648}})",
           R"({"keyCode":14,"modifiers":1179648,})",
           R"({'keyCode':14,'modifiers':1179648})",
           "\xFF\xFE{\0",
       }) {
    EXPECT_FALSE(HotkeyConfiguration::fromJson(json)) << json;
    ++refused;
  }
  EXPECT_EQ(refused, 27);
  EXPECT_FALSE(HotkeyConfiguration::fromJson(std::string(1000, '\0')));
  EXPECT_FALSE(HotkeyConfiguration::fromJson(std::string(100000, '[')));
}

}  // namespace
}  // namespace horalo
