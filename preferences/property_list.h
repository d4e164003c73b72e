#pragma once

#include <QByteArray>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace horalo::plist {

struct Value;
using Array = std::vector<Value>;
using Dictionary = std::map<std::string, Value, std::less<>>;

struct Data {
  std::string bytes;
  friend bool operator==(const Data&, const Data&) = default;
};

struct Date {
  std::string text;  // "2024-01-01T00:00:00Z", as it was written
  friend bool operator==(const Date&, const Date&) = default;
};

// One value of a property list. Types are kept apart: true is not 1, and "60" is not 60.
struct Value {
  using Content = std::variant<bool, std::int64_t, std::uint64_t, double, std::string, Data, Date,
                               Array, Dictionary>;

  Value(bool value) : content(value) {}
  Value(int value) : content(std::int64_t{value}) {}
  Value(std::int64_t value) : content(value) {}
  Value(std::uint64_t value) : content(value) {}  // for what exceeds std::int64_t
  Value(double value) : content(value) {}
  Value(std::string value) : content(std::move(value)) {}
  Value(const char* value) : content(std::string(value)) {}
  Value(Data value) : content(std::move(value)) {}
  Value(Date value) : content(std::move(value)) {}
  Value(Array value) : content(std::move(value)) {}
  Value(Dictionary value) : content(std::move(value)) {}

  // Nothing where the value is of another type.
  std::optional<bool> boolean() const;
  std::optional<double> number() const;  // an integer or a real
  const std::string* string() const;
  const std::string* data() const;
  const Array* array() const;
  const Dictionary* dictionary() const;

  friend bool operator==(const Value& a, const Value& b) { return a.content == b.content; }

  Content content;
};

// A property list longer than this many bytes is not read.
inline constexpr qsizetype kLongestDocument = 1 << 20;

// The dictionary of an XML property list; nothing where `document` is not well-formed, is longer
// than kLongestDocument, nests absurdly deep or holds something else than a dictionary. A value
// that cannot be understood (an unknown element, an integer of letters) is left out, and the
// values beside it count.
std::optional<Dictionary> read(const QByteArray& document);

// The XML property list of a dictionary, keys in order.
QByteArray write(const Dictionary& dictionary);

}  // namespace horalo::plist
