#include "platform/selection_text.h"

#include <gtest/gtest.h>

namespace horalo {
namespace {

using State = SelectionText::State;

TEST(SelectionText, readsLatin1AndUtf8) {
  struct Row {
    std::string_view bytes;
    TextEncoding encoding;
    std::string_view expected;
  };
  const Row rows[] = {
      {"1700000000", TextEncoding::utf8, "1700000000"},
      {"1700000000", TextEncoding::latin1, "1700000000"},
      {"f\xC3\xBCr", TextEncoding::utf8, "für"},
      {"f\xFCr", TextEncoding::latin1, "für"},
      {"f\xC3\xBCr", TextEncoding::latin1, "fÃ¼r"},
      {"f\xC3\xBCr", TextEncoding::unknown, "für"},
      {"f\xFCr", TextEncoding::unknown, "für"},
      {"17\xFF", TextEncoding::utf8, "17\xEF\xBF\xBD"},
      {"", TextEncoding::utf8, ""},
      {std::string_view("1\0", 2), TextEncoding::utf8, std::string_view("1\0", 2)},
  };
  int read = 0;
  for (const Row& row : rows) {
    SelectionText text({});
    EXPECT_EQ(text.append(row.bytes), State::wantsMore);
    EXPECT_EQ(text.text(row.encoding), row.expected) << row.bytes;
    ++read;
  }
  EXPECT_EQ(read, 10);
}

TEST(SelectionText, refusesWhatIsLongerThanTheLimit) {
  SelectionText text({.bytes = 10});
  EXPECT_EQ(text.append("12345"), State::wantsMore);
  EXPECT_EQ(text.append("67890"), State::wantsMore);
  EXPECT_EQ(text.append(""), State::wantsMore);
  EXPECT_EQ(text.append("1"), State::tooLong);
  EXPECT_TRUE(text.isTooLong(11));
  EXPECT_FALSE(text.isTooLong(10));
}

TEST(SelectionText, cutsTheFirstLineOutOfALongText) {
  SelectionText text({.bytes = 10, .firstLineOnly = true});
  EXPECT_FALSE(text.isTooLong(1'000'000));
  EXPECT_EQ(text.append("17000"), State::wantsMore);
  EXPECT_EQ(text.append("00\nand much more"), State::complete);
  EXPECT_EQ(text.text(TextEncoding::utf8), "1700000");
}

TEST(SelectionText, takesTheFirstLineThatIsNotEmpty) {
  struct Row {
    std::string_view bytes, line;
  };
  const Row rows[] = {{"one", "one"},         {"one\n", "one"},       {"one\r\ntwo", "one"},
                      {"\n\r\none\n", "one"}, {"\n\n", ""},           {"", ""},
                      {"one\rtwo", "one"},    {" one \ntwo", " one "}};
  int read = 0;
  for (const Row& row : rows) {
    SelectionText text({.firstLineOnly = true});
    text.append(row.bytes);
    EXPECT_EQ(text.text(TextEncoding::utf8), row.line);
    ++read;
  }
  EXPECT_EQ(read, 8);
}

TEST(SelectionText, refusesAFirstLineThatIsLongerThanTheLimit) {
  SelectionText text({.bytes = 4, .firstLineOnly = true});
  EXPECT_EQ(text.append("12345\n"), State::tooLong);
}

TEST(SelectionText, writesLatin1) {
  EXPECT_EQ(utf8ToLatin1("f\xC3\xBCr 10 \xE2\x82\xAC"), "f\xFCr 10 ?");
  EXPECT_TRUE(fitsLatin1("f\xC3\xBCr"));
  EXPECT_FALSE(fitsLatin1("10 \xE2\x82\xAC"));
  EXPECT_EQ(latin1ToUtf8(utf8ToLatin1("\xC3\xBF")), "\xC3\xBF");
}

}  // namespace
}  // namespace horalo
