#include "hotkey/hotkey_configuration.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <cmath>
#include <limits>

namespace horalo {
namespace {

struct KeyName {
  std::uint32_t keyCode;
  std::string_view name;
};

// clang-format off
constexpr KeyName kKeyNames[] = {
    {0, "A"}, {11, "B"}, {8, "C"}, {2, "D"}, {14, "E"}, {3, "F"},
    {5, "G"}, {4, "H"}, {34, "I"}, {38, "J"}, {40, "K"}, {37, "L"},
    {46, "M"}, {45, "N"}, {31, "O"}, {35, "P"}, {12, "Q"}, {15, "R"},
    {1, "S"}, {17, "T"}, {32, "U"}, {9, "V"}, {13, "W"}, {7, "X"},
    {16, "Y"}, {6, "Z"}, {29, "0"}, {18, "1"}, {19, "2"}, {20, "3"},
    {21, "4"}, {23, "5"}, {22, "6"}, {26, "7"}, {28, "8"}, {25, "9"},
    {50, "`"}, {27, "-"}, {24, "="}, {33, "["}, {30, "]"}, {42, "\\"},
    {41, ";"}, {39, "'"}, {43, ","}, {47, "."}, {44, "/"}, {49, "Space"},
    {36, "↵"}, {48, "⇥"}, {51, "⌫"}, {53, "⎋"}, {122, "F1"}, {120, "F2"},
    {99, "F3"}, {118, "F4"}, {96, "F5"}, {97, "F6"}, {98, "F7"}, {100, "F8"},
    {101, "F9"}, {109, "F10"}, {103, "F11"}, {111, "F12"}, {123, "←"}, {124, "→"},
    {126, "↑"}, {125, "↓"},
};
// clang-format on

std::optional<std::uint32_t> unsignedMember(const QJsonObject& object, QLatin1String name) {
  const QJsonValue value = object.value(name);
  if (!value.isDouble()) return std::nullopt;
  const double number = value.toDouble();
  const double largest = std::numeric_limits<std::uint32_t>::max();
  if (!(number >= 0 && number <= largest) || number != std::floor(number)) return std::nullopt;
  return static_cast<std::uint32_t>(number);
}

}  // namespace

std::optional<HotkeyConfiguration> HotkeyConfiguration::fromJson(std::string_view json) {
  const auto size = static_cast<qsizetype>(json.size());
  const auto document = QJsonDocument::fromJson(QByteArray::fromRawData(json.data(), size));
  if (!document.isObject()) return std::nullopt;
  const QJsonObject object = document.object();
  const auto keyCode = unsignedMember(object, QLatin1String("keyCode"));
  const auto modifiers = unsignedMember(object, QLatin1String("modifiers"));
  if (!keyCode || !modifiers) return std::nullopt;
  return HotkeyConfiguration{*keyCode, *modifiers};
}

std::string HotkeyConfiguration::toJson() const {
  return "{\"keyCode\":" + std::to_string(keyCode) + ",\"modifiers\":" + std::to_string(modifiers) +
         "}";
}

std::string HotkeyConfiguration::displayString() const {
  std::string text = ModifierFlags{modifiers}.description();
  if (const auto name = keyCodeToString(keyCode)) text += *name;
  return text;
}

std::optional<std::string_view> keyCodeToString(std::uint32_t keyCode) {
  for (const KeyName& row : kKeyNames) {
    if (row.keyCode == keyCode) return row.name;
  }
  return std::nullopt;
}

}  // namespace horalo
