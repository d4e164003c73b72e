#pragma once

namespace horalo {

// Properties of ASCII characters, the same in every locale. Bytes of other characters have none.
constexpr bool isAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr char lowered(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace horalo
