#include "app/update/version_order.h"

#include <algorithm>

namespace horalo {
namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Kinds of parts, in their order: "2.0b1" < "2.0" < "2.0.1".
enum class Kind { word, end, number };

struct Part {
  Kind kind = Kind::end;
  std::string_view text;  // a number without its leading zeros
};

// Reads a version part by part.
class Parts {
 public:
  explicit Parts(std::string_view version) : rest_(version.substr(0, version.find('+'))) {}

  Part next() {
    while (!rest_.empty() && !isDigit(rest_[0]) && !isLetter(rest_[0])) rest_.remove_prefix(1);
    if (rest_.empty()) return {};
    if (isLetter(rest_[0])) return {Kind::word, take(isLetter)};
    std::string_view digits = take(isDigit);
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return {Kind::number, digits};
  }

 private:
  std::string_view take(bool (*belongs)(char)) {
    const auto* const end = std::find_if_not(rest_.begin(), rest_.end(), belongs);
    const auto length = static_cast<std::size_t>(end - rest_.begin());
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return taken;
  }

  std::string_view rest_;
};

std::weak_ordering compareNumbers(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return a.size() <=> b.size();
  return a <=> b;
}

std::weak_ordering compareParts(const Part& a, const Part& b) {
  if (a.kind == Kind::word && b.kind == Kind::word) return a.text <=> b.text;
  if (a.kind == Kind::word || b.kind == Kind::word) return a.kind <=> b.kind;
  return compareNumbers(a.text, b.text);  // the end has no digits, like 0
}

}  // namespace

bool isVersion(std::string_view text) {
  return text.size() <= kLongestVersion && std::any_of(text.begin(), text.end(), isDigit) &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

std::weak_ordering compareVersions(std::string_view a, std::string_view b) {
  Parts partsOfA(a);
  Parts partsOfB(b);
  while (true) {
    const Part partOfA = partsOfA.next();
    const Part partOfB = partsOfB.next();
    const auto order = compareParts(partOfA, partOfB);
    if (order != 0) return order;
    if (partOfA.kind == Kind::end && partOfB.kind == Kind::end)
      return std::weak_ordering::equivalent;
  }
}

}  // namespace horalo
