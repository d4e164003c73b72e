#include "platform/selection_text.h"

#include "base/utf8.h"

namespace horalo {
namespace {

constexpr std::string_view kLineBreaks = "\r\n";

// Where the first line that is not empty starts; npos where there is none.
std::size_t startOfFirstLine(std::string_view bytes) {
  return bytes.find_first_not_of(kLineBreaks);
}

bool holdsWholeFirstLine(std::string_view bytes) {
  const std::size_t start = startOfFirstLine(bytes);
  return start != bytes.npos && bytes.find_first_of(kLineBreaks, start) != bytes.npos;
}

std::string_view firstLine(std::string_view bytes) {
  const std::size_t start = startOfFirstLine(bytes);
  if (start == bytes.npos) return {};
  bytes.remove_prefix(start);
  return bytes.substr(0, bytes.find_first_of(kLineBreaks));
}

}  // namespace

std::string latin1ToUtf8(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const char byte : bytes) appendUtf8(text, static_cast<unsigned char>(byte));
  return text;
}

std::string utf8ToLatin1(std::string_view text) {
  std::string bytes;
  while (!text.empty()) {
    const CodePoint c = decodeUtf8(text);
    bytes += c.value <= 0xFF ? static_cast<char>(c.value) : '?';
    text.remove_prefix(c.length);
  }
  return bytes;
}

bool fitsLatin1(std::string_view text) {
  while (!text.empty()) {
    const CodePoint c = decodeUtf8(text);
    if (c.value > 0xFF) return false;
    text.remove_prefix(c.length);
  }
  return true;
}

SelectionText::State SelectionText::append(std::string_view bytes) {
  const std::size_t room = limits_.bytes - bytes_.size();
  const bool fits = bytes.size() <= room;
  bytes_ += bytes.substr(0, room);
  if (limits_.firstLineOnly && holdsWholeFirstLine(bytes_)) return State::complete;
  return fits ? State::wantsMore : State::tooLong;
}

bool SelectionText::isTooLong(std::size_t announcedBytes) const {
  return announcedBytes > limits_.bytes && !limits_.firstLineOnly;
}

std::string SelectionText::text(TextEncoding encoding) const {
  const std::string_view bytes = limits_.firstLineOnly ? firstLine(bytes_) : bytes_;
  const bool isLatin1 = encoding == TextEncoding::latin1 ||
                        (encoding == TextEncoding::unknown && !isValidUtf8(bytes));
  return isLatin1 ? latin1ToUtf8(bytes) : toValidUtf8(bytes);
}

}  // namespace horalo
