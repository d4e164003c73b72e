#include <QString>
#include <QXmlStreamReader>
#include <charconv>
#include <cmath>
#include <limits>

#include "preferences/property_list.h"

namespace horalo::plist {
namespace {

// Deeper documents are attacks or accidents; reading them must not exhaust the stack.
constexpr int kDeepest = 256;

template <typename Number, typename... Format>
std::optional<Number> parsed(std::string_view text, Format... format) {
  Number number{};
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, format...);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

// Decimal or 0x and hexadecimal digits, with or without a sign.
std::optional<Value> integerOf(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
  if (hexadecimal) text.remove_prefix(2);
  const auto magnitude = parsed<std::uint64_t>(text, hexadecimal ? 16 : 10);
  if (!magnitude) return std::nullopt;

  constexpr auto kMax = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (negative) {
    if (*magnitude > kMax + 1) return std::nullopt;
    return std::make_optional<Value>(static_cast<std::int64_t>(0 - *magnitude));
  }
  if (*magnitude > kMax) return std::make_optional<Value>(*magnitude);
  return std::make_optional<Value>(static_cast<std::int64_t>(*magnitude));
}

// Decimal notation, "nan", "inf" and "infinity" in any capitals.
std::optional<Value> realOf(std::string_view text) {
  const bool plus = text.starts_with('+');
  if (plus) text.remove_prefix(1);
  if (plus && text.starts_with('-')) return std::nullopt;
  if (const auto number = parsed<double>(text)) return std::make_optional<Value>(*number);
  return std::nullopt;
}

std::optional<Value> dataOf(const QString& text) {
  QByteArray letters = text.toLatin1();
  letters.removeIf([](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
  const auto decoded =
      QByteArray::fromBase64Encoding(letters, QByteArray::AbortOnBase64DecodingErrors);
  if (!decoded) return std::nullopt;
  return std::make_optional<Value>(Data{decoded.decoded.toStdString()});
}

class Reader {
 public:
  explicit Reader(const QByteArray& document) : xml_(document) {}

  std::optional<Value> document() {
    if (!xml_.readNextStartElement()) return std::nullopt;
    std::optional<Value> root;
    if (xml_.name() == QLatin1String("plist")) {
      if (xml_.readNextStartElement()) root = value(0);
      while (xml_.readNextStartElement()) xml_.skipCurrentElement();
    } else {
      root = value(0);
    }
    while (!xml_.atEnd()) xml_.readNext();
    if (xml_.hasError()) return std::nullopt;
    return root;
  }

 private:
  // Reads to the end of the element that has just started.
  std::optional<Value> value(int depth) {
    if (depth > kDeepest) {
      xml_.raiseError();
      return std::nullopt;
    }
    const QString name = xml_.name().toString();
    if (name == QLatin1String("dict")) return dictionary(depth);
    if (name == QLatin1String("array")) return array(depth);

    const QString text = xml_.readElementText(QXmlStreamReader::IncludeChildElements);
    if (name == QLatin1String("true")) return std::make_optional<Value>(true);
    if (name == QLatin1String("false")) return std::make_optional<Value>(false);
    if (name == QLatin1String("string")) return std::make_optional<Value>(text.toStdString());
    if (name == QLatin1String("data")) return dataOf(text);
    const std::string trimmed = text.trimmed().toStdString();
    if (name == QLatin1String("integer")) return integerOf(trimmed);
    if (name == QLatin1String("real")) return realOf(trimmed);
    if (name == QLatin1String("date")) return std::make_optional<Value>(Date{trimmed});
    return std::nullopt;
  }

  std::optional<Value> dictionary(int depth) {
    Dictionary dictionary;
    std::optional<std::string> key;
    while (xml_.readNextStartElement()) {
      if (xml_.name() == QLatin1String("key")) {
        key = xml_.readElementText().toStdString();
      } else if (auto entry = value(depth + 1); entry && key) {
        dictionary.insert_or_assign(*std::exchange(key, std::nullopt), std::move(*entry));
      } else {
        key.reset();
      }
    }
    return std::make_optional<Value>(std::move(dictionary));
  }

  std::optional<Value> array(int depth) {
    Array array;
    while (xml_.readNextStartElement()) {
      if (auto entry = value(depth + 1)) array.push_back(std::move(*entry));
    }
    return std::make_optional<Value>(std::move(array));
  }

  QXmlStreamReader xml_;
};

}  // namespace

std::optional<Dictionary> read(const QByteArray& document) {
  if (document.size() > kLongestDocument) return std::nullopt;
  auto root = Reader(document).document();
  if (!root) return std::nullopt;
  auto* dictionary = std::get_if<Dictionary>(&root->content);
  if (dictionary == nullptr) return std::nullopt;
  return std::move(*dictionary);
}

}  // namespace horalo::plist
