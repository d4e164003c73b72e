#include "base/json_text.h"

#include <gtest/gtest.h>

#include <utility>

namespace horalo {
namespace {

TEST(JsonText, EscapesWhatItMustAndEveryControl) {
  using namespace std::string_view_literals;
  constexpr std::pair<std::string_view, std::string_view> kCases[]{
      {"", R"("")"},
      {"plain", R"("plain")"},
      {"a\"b\\c/d", R"("a\"b\\c/d")"},
      {"\b\f\n\r\t", R"("\b\f\n\r\t")"},
      {"\0\x01\x1F\x7F"sv, R"("\u0000\u0001\u001f\u007f")"},
      {"\u0080\u0085\u009F", R"("\u0080\u0085\u009f")"},
      {"\u00A0\u00BF\u00C0", "\"\u00A0\u00BF\u00C0\""},
      {"\u2028日本🎉", "\"\u2028日本🎉\""},
      {"x\ny", R"("x\ny")"},
  };
  int compared = 0;
  for (const auto& [text, json] : kCases) {
    std::string made = "[";
    appendJsonString(made, text);
    EXPECT_EQ(made, "[" + std::string(json));
    ++compared;
  }
  EXPECT_EQ(compared, 9);
}

}  // namespace
}  // namespace horalo
