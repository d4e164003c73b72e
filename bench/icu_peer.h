#pragma once

#include <unicode/reldatefmt.h>
#include <unicode/smpdtfmt.h>
#include <unicode/unistr.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace horalo {

// What the locale library does with the same texts when it is used well: every format is made once,
// and texts are handed over in its own encoding.
class IcuLayouts {
 public:
  IcuLayouts();

  // Tries the layouts of human dates strictly and in order until one fits the whole text; the
  // milliseconds since the epoch, or a negative number where none does.
  double parse(const icu::UnicodeString& text) const;

  // How many layouts there are.
  std::size_t size() const { return formats_.size(); }

 private:
  std::vector<std::unique_ptr<icu::SimpleDateFormat>> formats_;
};

// The two calls that the formatted and the relative row cannot do without.
class IcuPhrases {
 public:
  explicit IcuPhrases(const std::string& locale);

  // Formats an instant and a count of days; the length of both texts.
  int dateAndPhrase(double milliseconds, double days) const;

 private:
  std::unique_ptr<icu::SimpleDateFormat> dateTime_;
  std::unique_ptr<icu::RelativeDateTimeFormatter> relative_;
};

}  // namespace horalo
