#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace horalo {

// U+FFFD, which stands for what cannot be shown.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// One code point read from UTF-8 text.
struct CodePoint {
  char32_t value = 0;      // kReplacementCharacter where the bytes are not UTF-8
  std::size_t length = 0;  // bytes that it takes in the text, at least 1
  bool valid = false;
};

// The code point at the start of `text`, which is not empty. Bytes that are not UTF-8 are read as
// the Unicode standard recommends (chapter 3, "Substitution of Maximal Subparts"): each maximal
// part of an ill-formed sequence is one U+FFFD.
CodePoint decodeUtf8(std::string_view text);

// The code point that ends `text`, which is not empty. A last byte that belongs to none is one
// U+FFFD.
CodePoint decodeLastUtf8(std::string_view text);

void appendUtf8(std::string& text, char32_t codePoint);

bool isValidUtf8(std::string_view text);

// `text` with everything that is not UTF-8 replaced by U+FFFD.
std::string toValidUtf8(std::string_view text);

// At most `limit` code points of `text` for a message on a terminal: control characters, NUL among
// them, and bytes that are not UTF-8 become U+FFFD.
std::string printable(std::string_view text, std::size_t limit);

}  // namespace horalo
