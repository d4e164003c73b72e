#include "base/json_text.h"

#include <array>

namespace horalo {
namespace {

void appendEscape(std::string& json, unsigned value) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  json += "\\u00";
  json += kDigits[value >> 4U];
  json += kDigits[value & 0xFU];
}

char shortEscape(char c) {
  switch (c) {
    case '"':
    case '\\':
      return c;
    case '\b':
      return 'b';
    case '\f':
      return 'f';
    case '\n':
      return 'n';
    case '\r':
      return 'r';
    case '\t':
      return 't';
    default:
      return '\0';
  }
}

// The bytes that stand for themselves. 0xC2 starts U+0080 to U+00BF, which hold the controls
// beyond ASCII.
constexpr std::array<bool, 256> kPlain = [] {
  std::array<bool, 256> plain{};
  for (std::size_t byte = 0x20; byte < plain.size(); ++byte) {
    plain[byte] = byte != '"' && byte != '\\' && byte != 0x7F && byte != 0xC2;
  }
  return plain;
}();

std::size_t plainLength(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && kPlain[static_cast<unsigned char>(text[i])]) ++i;
  return i;
}

}  // namespace

void appendJsonString(std::string& json, std::string_view text) {
  json += '"';
  while (!text.empty()) {
    const std::size_t plain = plainLength(text);
    json += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) break;
    const auto first = static_cast<unsigned char>(text.front());
    std::size_t taken = 1;
    if (const char escape = shortEscape(text.front())) {
      json += '\\';
      json += escape;
    } else if (first == 0xC2 && text.size() > 1) {
      // U+0080 to U+00BF, of which the first half are controls.
      const auto second = static_cast<unsigned char>(text[1]);
      taken = 2;
      if (second < 0xA0) {
        appendEscape(json, second);
      } else {
        json += text.substr(0, 2);
      }
    } else {
      appendEscape(json, first);
    }
    text.remove_prefix(taken);
  }
  json += '"';
}

}  // namespace horalo
