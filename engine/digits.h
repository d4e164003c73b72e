#pragma once

#include <cstddef>
#include <string_view>

#include "base/ascii.h"

namespace horalo {

// The value of `count` ASCII digits at `start`, which must lie inside `text`; -1 where one of them
// is no digit. `count` is at most 9.
constexpr int fixedDigits(std::string_view text, std::size_t start, std::size_t count) {
  int value = 0;
  for (const char c : text.substr(start, count)) {
    if (!isDigit(c)) return -1;
    value = value * 10 + (c - '0');
  }
  return value;
}

// Takes the ASCII digits off the front of `text`; empty where it starts with none.
constexpr std::string_view takeDigits(std::string_view& text) {
  std::size_t count = 0;
  while (count < text.size() && isDigit(text[count])) ++count;
  const std::string_view digits = text.substr(0, count);
  text.remove_prefix(count);
  return digits;
}

}  // namespace horalo
