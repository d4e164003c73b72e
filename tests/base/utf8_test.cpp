#include "base/utf8.h"

#include <gtest/gtest.h>
#include <unicode/unistr.h>

#include <random>
#include <string>
#include <vector>

namespace horalo {
namespace {

bool isScalar(char32_t c) {
  return c < 0xD800 || (c >= 0xE000 && c <= 0x10FFFF);
}

TEST(Utf8, HoldsEveryCodePoint) {
  int held = 0;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (!isScalar(c)) continue;
    std::string text;
    appendUtf8(text, c);
    const CodePoint first = decodeUtf8(text), last = decodeLastUtf8("x" + text);
    ASSERT_TRUE(first.valid && last.valid) << static_cast<std::uint32_t>(c);
    ASSERT_EQ(first.value, c);
    ASSERT_EQ(last.value, c);
    ASSERT_EQ(first.length, text.size());
    ASSERT_EQ(last.length, text.size());
    ASSERT_TRUE(isValidUtf8(text));
    ++held;
  }
  EXPECT_EQ(held, 0x110000 - 0x800);
}

// The locale library replaces maximal subparts too.
std::string asIcuReadsIt(const std::string& bytes) {
  std::string text;
  icu::UnicodeString::fromUTF8(bytes).toUTF8String(text);
  return text;
}

// Bytes that matter: ASCII, continuations, leads of every length, and what is never allowed.
std::string randomBytes(std::mt19937& random) {
  constexpr unsigned char kBytes[]{0x00, 'a',  '~',  0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0,
                                   0xBF, 0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xED, 0xEE,
                                   0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xF8, 0xFE, 0xFF,
                                   0x80, 0xBF, 0xA0, 0x90, 0x80, 0xBF};
  std::string bytes(random() % 12, 'x');
  for (char& byte : bytes) byte = static_cast<char>(kBytes[random() % std::size(kBytes)]);
  return bytes;
}

TEST(Utf8, ReplacesWhatIsNoneAsTheStandardRecommends) {
  std::mt19937 random(31);
  int valid = 0;
  constexpr int kTexts = 500'000;
  for (int i = 0; i < kTexts; ++i) {
    const std::string bytes = randomBytes(random);
    const std::string expected = asIcuReadsIt(bytes);
    ASSERT_EQ(toValidUtf8(bytes), expected) << testing::PrintToString(bytes);
    ASSERT_EQ(isValidUtf8(bytes), bytes == expected) << testing::PrintToString(bytes);
    if (bytes == expected) ++valid;
  }
  EXPECT_GT(valid, kTexts / 20);
  EXPECT_LT(valid, kTexts / 2);
}

TEST(Utf8, IsReadFromTheEndAsFromTheStart) {
  std::mt19937 random(37);
  for (int i = 0; i < 200'000; ++i) {
    std::string bytes = randomBytes(random);
    if (!isValidUtf8(bytes)) continue;
    std::vector<char32_t> forwards, backwards;
    for (std::string_view rest = bytes; !rest.empty();) {
      const CodePoint c = decodeUtf8(rest);
      forwards.push_back(c.value);
      rest.remove_prefix(c.length);
    }
    for (std::string_view rest = bytes; !rest.empty();) {
      const CodePoint c = decodeLastUtf8(rest);
      backwards.insert(backwards.begin(), c.value);
      rest.remove_suffix(c.length);
    }
    ASSERT_EQ(forwards, backwards) << testing::PrintToString(bytes);
  }
}

// Long runs of ASCII are passed over in large steps: no place in them may be missed.
TEST(Utf8, FindsOneBadByteAnywhere) {
  for (std::size_t size = 1; size <= 40; ++size) {
    for (std::size_t place = 0; place < size; ++place) {
      std::string text(size, 'a');
      ASSERT_TRUE(isValidUtf8(text));
      text[place] = '\xFF';
      ASSERT_FALSE(isValidUtf8(text)) << size << " " << place;
      text.replace(place, 1, "\u00E9");
      ASSERT_TRUE(isValidUtf8(text)) << size << " " << place;
    }
  }
}

TEST(Utf8, IsShownWithoutControls) {
  EXPECT_EQ(printable("a\tb\n\x7F", 10), "a\uFFFDb\uFFFD\uFFFD");
  EXPECT_EQ(printable(std::string("\0\0", 2), 10), "\uFFFD\uFFFD");
  EXPECT_EQ(printable("\u0080\u009F\u00A0", 10), "\uFFFD\uFFFD\u00A0");
  EXPECT_EQ(printable("\xE2\x82z\xFF", 10), "\uFFFDz\uFFFD");
  EXPECT_EQ(printable("日本語", 2), "日本");
  EXPECT_EQ(printable("abc", 0), "");
  EXPECT_EQ(printable("", 5), "");
}

}  // namespace
}  // namespace horalo
