#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "clipboard/pasteboard.h"

namespace horalo {

// What another program says of its text; where it says nothing, it is UTF-8 if it can be, else
// Latin-1.
enum class TextEncoding { utf8, latin1, unknown };

std::string latin1ToUtf8(std::string_view bytes);
// Characters that Latin-1 lacks become "?".
std::string utf8ToLatin1(std::string_view text);
bool fitsLatin1(std::string_view text);

// What another program sent, cut to what the reader takes. Collects pieces as they come and keeps
// no more than the limit.
class SelectionText {
 public:
  explicit SelectionText(const Pasteboard::ReadLimits& limits) : limits_(limits) {}

  enum class State {
    wantsMore,  // goes on until the other program says that this was all
    complete,   // more would change nothing: the first line is there
    tooLong
  };
  State append(std::string_view bytes);

  // Whether a text announced with so many bytes need not be fetched at all.
  bool isTooLong(std::size_t announcedBytes) const;

  // The text as UTF-8, wrong bytes as U+FFFD: all of it, or its first line that is not empty.
  std::string text(TextEncoding encoding) const;

 private:
  Pasteboard::ReadLimits limits_;
  std::string bytes_;
};

}  // namespace horalo
