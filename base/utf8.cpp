#include "base/utf8.h"

#include <cstring>

namespace horalo {
namespace {

constexpr bool isContinuation(unsigned char byte) {
  return (byte & 0xC0U) == 0x80U;
}

constexpr bool isControl(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

// What a lead byte announces; the second byte is the only one whose range depends on the lead
// (Unicode standard, table 3-7).
struct Lead {
  std::size_t length;  // 0: no lead byte
  unsigned char secondMin, secondMax;
  unsigned char bits;  // the lead's own payload
};

constexpr Lead leadOf(unsigned char byte) {
  if (byte >= 0xC2 && byte <= 0xDF) return {2, 0x80, 0xBF, static_cast<unsigned char>(byte & 0x1F)};
  if (byte >= 0xE0 && byte <= 0xEF) {
    return {3, static_cast<unsigned char>(byte == 0xE0 ? 0xA0 : 0x80),
            static_cast<unsigned char>(byte == 0xED ? 0x9F : 0xBF),
            static_cast<unsigned char>(byte & 0x0F)};
  }
  if (byte >= 0xF0 && byte <= 0xF4) {
    return {4, static_cast<unsigned char>(byte == 0xF0 ? 0x90 : 0x80),
            static_cast<unsigned char>(byte == 0xF4 ? 0x8F : 0xBF),
            static_cast<unsigned char>(byte & 0x07)};
  }
  return {0, 0, 0, 0};
}

// How many bytes at the start of `text` are ASCII; it may stop up to seven bytes short of a byte
// that is not.
std::size_t asciiLength(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080'8080'8080'8080;
  std::size_t i = 0;
  for (std::uint64_t word = 0; text.size() - i >= sizeof word; i += sizeof word) {
    std::memcpy(&word, text.data() + i, sizeof word);
    if ((word & kHighBits) != 0) return i;
  }
  while (i < text.size() && static_cast<unsigned char>(text[i]) < 0x80) ++i;
  return i;
}

}  // namespace

CodePoint decodeUtf8(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  if (first < 0x80) return {first, 1, true};
  const Lead lead = leadOf(first);
  char32_t value = lead.bits;
  for (std::size_t i = 1; i < lead.length; ++i) {
    if (i >= text.size()) return {kReplacementCharacter, i, false};
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool fits =
        i == 1 ? byte >= lead.secondMin && byte <= lead.secondMax : isContinuation(byte);
    if (!fits) return {kReplacementCharacter, i, false};
    value = (value << 6U) | (byte & 0x3FU);
  }
  if (lead.length == 0) return {kReplacementCharacter, 1, false};
  return {value, lead.length, true};
}

CodePoint decodeLastUtf8(std::string_view text) {
  std::size_t start = text.size() - 1;
  while (start > 0 && text.size() - start < 4 &&
         isContinuation(static_cast<unsigned char>(text[start]))) {
    --start;
  }
  const CodePoint last = decodeUtf8(text.substr(start));
  // A stray continuation byte ends no code point.
  if (start + last.length != text.size()) return {kReplacementCharacter, 1, false};
  return last;
}

void appendUtf8(std::string& text, char32_t c) {
  const auto tail = [&](unsigned shift) {
    text += static_cast<char>(0x80U | ((c >> shift) & 0x3FU));
  };
  if (c < 0x80) {
    text += static_cast<char>(c);
  } else if (c < 0x800) {
    text += static_cast<char>(0xC0U | (c >> 6U));
    tail(0);
  } else if (c < 0x10000) {
    text += static_cast<char>(0xE0U | (c >> 12U));
    tail(6);
    tail(0);
  } else {
    text += static_cast<char>(0xF0U | (c >> 18U));
    tail(12);
    tail(6);
    tail(0);
  }
}

bool isValidUtf8(std::string_view text) {
  while (!text.empty()) {
    text.remove_prefix(asciiLength(text));
    if (text.empty()) break;
    const CodePoint c = decodeUtf8(text);
    if (!c.valid) return false;
    text.remove_prefix(c.length);
  }
  return true;
}

std::string toValidUtf8(std::string_view text) {
  std::string valid;
  valid.reserve(text.size());
  while (!text.empty()) {
    const CodePoint c = decodeUtf8(text);
    if (c.valid) {
      valid += text.substr(0, c.length);
    } else {
      appendUtf8(valid, kReplacementCharacter);
    }
    text.remove_prefix(c.length);
  }
  return valid;
}

std::string printable(std::string_view text, std::size_t limit) {
  std::string shown;
  for (std::size_t count = 0; count < limit && !text.empty(); ++count) {
    const CodePoint c = decodeUtf8(text);
    appendUtf8(shown, isControl(c.value) ? kReplacementCharacter : c.value);
    text.remove_prefix(c.length);
  }
  return shown;
}

}  // namespace horalo
